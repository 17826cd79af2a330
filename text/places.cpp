#include "places.h"

namespace kcnvrt::text {

namespace {

bool is_sought(const Problem& problem, const Source& source) {
    return problem.which == source.which && problem.pointer != nullptr && problem.spot.line == 0;
}

}  // namespace

void find_places(const Source& source, k_text_result_t& result) {
    GrowingArray<Sought> sought;
    for (const Problem& problem : result.problems) {
        if (!is_sought(problem, source)) continue;
        Sought wanted;
        wanted.pointer = problem.pointer;
        if (!sought.add(wanted)) return result.run_out_of_memory();
    }
    if (sought.is_empty()) return;
    if (!find_values(source.text, sought.data(), sought.size())) return result.run_out_of_memory();
    const Sought* found = sought.begin();
    for (Problem& problem : result.problems) {
        if (!is_sought(problem, source)) continue;
        problem.spot = found->spot;
        problem.length = found->length;
        ++found;
    }
}

}  // namespace kcnvrt::text
