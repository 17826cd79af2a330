// What a result tells.
#include "result.h"

#include <cstring>
#include <new>

#include "excerpt.h"
#include "operations.h"

namespace kcnvrt::text {

KeptTexts::~KeptTexts() {
    for (char* text : texts_) std::free(text);
}

const char* KeptTexts::keep(std::string_view text) {
    auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy == nullptr) return nullptr;
    if (!text.empty()) std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    if (texts_.add(copy)) return copy;
    std::free(copy);
    return nullptr;
}

}  // namespace kcnvrt::text

using kcnvrt::text::Loss;
using kcnvrt::text::Problem;
using kcnvrt::text::Spot;

void k_text_result::fail(int why, const Problem& problem) {
    status = why;
    add(problem);
}

void k_text_result::run_out_of_memory() {
    status = K_TEXT_OUT_OF_MEMORY;
    output.cut(0);
}

void k_text_result::add(const Problem& problem) {
    if (!problems.add(problem)) run_out_of_memory();
}

namespace {

// The members that the first version has.
constexpr uint32_t kLeastSize = sizeof(k_text_problem_t);

k_text_problem_t public_form(const Problem& problem) {
    return {sizeof(k_text_problem_t), problem.which,   problem.spot.offset, problem.length,   problem.spot.line,
            problem.spot.column,      problem.pointer, problem.severity,    problem.function, problem.message};
}

}  // namespace

namespace {

k_text_result_t* run(const k_text_request_t* request, const kcnvrt::text::TreeMemory* tree_memory) {
    void* const memory = std::malloc(sizeof(k_text_result_t));
    if (memory == nullptr) return nullptr;
    auto* const result = new (memory) k_text_result_t;
    result->tree_memory = tree_memory;
    kcnvrt::text::run(request, *result);
    return result;
}

}  // namespace

k_text_result_t* kcnvrt::text::run_and_leave_trees(const k_text_request_t* request, const TreeMemory& memory) {
    return ::run(request, &memory);
}

k_text_result_t* k_text_run(const k_text_request_t* request) {
    return run(request, nullptr);
}

int k_text_status(const k_text_result_t* result) {
    return result == nullptr ? static_cast<int>(K_TEXT_OUT_OF_MEMORY) : result->status;
}

uint32_t k_text_direction(const k_text_result_t* result) {
    return result == nullptr ? 0 : result->direction;
}

const char* k_text_output(const k_text_result_t* result, size_t* length) {
    const bool has_output = result != nullptr && result->output.size() != 0;
    if (length != nullptr) *length = has_output ? result->output.size() - 1 : 0;
    return has_output ? result->output.data() : nullptr;
}

size_t k_text_problem_count(const k_text_result_t* result) {
    return result == nullptr ? 0 : result->problems.size();
}

int k_text_problem(const k_text_result_t* result, size_t index, k_text_problem_t* problem) {
    if (index >= k_text_problem_count(result) || problem == nullptr || problem->size < kLeastSize) return -1;
    const uint32_t size = problem->size;
    *problem = public_form(result->problems[index]);
    problem->size = size;
    return 0;
}

size_t k_text_loss_count(const k_text_result_t* result) {
    return result == nullptr ? 0 : result->losses.size();
}

int k_text_loss(const k_text_result_t* result, size_t index, k_text_loss_t* loss) {
    if (index >= k_text_loss_count(result) || loss == nullptr || loss->size < sizeof *loss) return -1;
    const Loss& found = result->losses[index];
    const Spot& spot = found.spot;
    *loss = {loss->size,  found.kind,    spot.offset,  found.length, spot.line,
             spot.column, found.pointer, found.before, found.after};
    return 0;
}

namespace {

// Null when memory ends.
const kcnvrt::GrowingArray<kcnvrt::text::Span>* secrets_of(k_text_result_t& result, uint32_t which,
                                                           std::string_view text) {
    kcnvrt::text::Secrets& secrets = result.secrets[which == K_TEXT_IN_TEXT ? 0 : 1];
    if (secrets.are_found) return &secrets.spans;
    const bool is_difference = result.operation == K_TEXT_APPLY && which == K_TEXT_IN_OTHER;
    secrets.spans.cut(0);
    secrets.are_found = find_secrets(text, is_difference, secrets.spans);
    return secrets.are_found ? &secrets.spans : nullptr;
}

}  // namespace

int k_text_excerpt(k_text_result_t* result, size_t index, const char* text, size_t length, size_t width,
                   k_text_excerpt_t* excerpt) {
    if (index >= k_text_problem_count(result) || excerpt == nullptr || excerpt->size < sizeof *excerpt) return -1;
    const Problem& problem = result->problems[index];
    if (problem.spot.line == 0 || text == nullptr) return -1;
    kcnvrt::text::View view = {{text, length}, nullptr};
    if (!result->shows_secrets) {
        view.secrets = secrets_of(*result, problem.which, view.text);
        if (view.secrets == nullptr) return -1;
    }
    const size_t start = problem.spot.offset;
    // Of an object or an array only the bracket is marked.
    const bool is_container = start < length && (text[start] == '{' || text[start] == '[');
    kcnvrt::text::Mark mark = {0, 0};
    result->excerpt.cut(0);
    const bool is_shown =
        show_line(view, {start, start + (is_container ? 1 : problem.length)}, width, result->excerpt, mark) &&
        result->excerpt.terminate();
    if (!is_shown) return -1;
    *excerpt = {excerpt->size, result->excerpt.data(), mark.offset, mark.length};
    return 0;
}

void k_text_free(k_text_result_t* result) {
    if (result == nullptr) return;
    result->~k_text_result_t();
    std::free(result);
}
