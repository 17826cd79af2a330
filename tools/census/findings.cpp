#include "findings.h"

#include <algorithm>
#include <tuple>

#include "commands/loss_lines.h"
#include "place_pattern.h"
#include "print/messages.h"

namespace kcnvrt {

namespace {

void add(const char* kind, const char* pointer, const std::string& id, std::vector<Finding>& findings) {
    findings.push_back({kind, place_pattern(pointer == nullptr ? "" : pointer), id});
}

auto key_of(const Finding& finding) {
    return std::tie(finding.kind, finding.place);
}

}  // namespace

void add_findings(const k_text_result_t* result, const std::string& id, std::vector<Finding>& findings) {
    std::vector<Finding> found;
    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i)
        if (problem.severity != K_TEXT_NOTE) add(severity_name(problem.severity), problem.pointer, id, found);
    k_text_loss_t loss;
    loss.size = sizeof loss;
    for (std::size_t i = 0; k_text_loss(result, i, &loss) == 0; ++i)
        add(loss_kind_name(loss.kind), loss.pointer, id, found);
    std::ranges::sort(found, {}, key_of);
    const auto are_twins = [](const Finding& one, const Finding& other) { return key_of(one) == key_of(other); };
    found.erase(std::unique(found.begin(), found.end(), are_twins), found.end());
    findings.insert(findings.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
}

}  // namespace kcnvrt
