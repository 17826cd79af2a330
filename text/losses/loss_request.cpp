#include "losses/loss_request.h"

#include <k_cnvrt.h>

#include <algorithm>

#include "losses/losses.h"

namespace kcnvrt::text {

namespace {

bool is_question(uint32_t operation) {
    return operation == K_TEXT_CHECK || operation == K_TEXT_LOSSES;
}

bool has_complaint(const k_text_result_t& result) {
    return !result.losses.is_empty() ||
           std::any_of(result.problems.begin(), result.problems.end(),
                       [](const Problem& problem) { return problem.severity != K_TEXT_NOTE; });
}

}  // namespace

bool asks_for_losses(const k_text_request_t& request) {
    return is_question(request.operation) || (request.flags & (K_TEXT_TELL_LOSSES | K_TEXT_STRICT)) != 0;
}

bool has_output(uint32_t operation) {
    return !is_question(operation);
}

void tell_losses(const LossQuestion& question, k_text_result_t& result) {
    const k_text_request_t& request = question.request;
    // Beside no result there is nothing to tell.
    const bool is_wanted =
        result.status == K_TEXT_CONVERTED || is_question(question.operation) || (request.flags & K_TEXT_PARTIAL) != 0;
    if (!is_wanted) return;
    const uint8_t flags = (request.flags & K_TEXT_DSL_VLAN) != 0 ? K_CNVRT_DSL_VLAN : 0;
    CounterCheck check({request.operation == K_TEXT_TO_NEW, nullptr, flags}, result.tree_memory);
    const bool is_answered = find_losses(question.text, question.root, check, is_question(question.operation), result);
    if (is_answered && question.operation == K_TEXT_LOSSES) result.status = K_TEXT_CONVERTED;
    const bool is_refused = (request.flags & K_TEXT_STRICT) != 0 && has_complaint(result);
    if (is_refused && result.status == K_TEXT_CONVERTED) result.status = K_TEXT_REJECTED;
}

}  // namespace kcnvrt::text
