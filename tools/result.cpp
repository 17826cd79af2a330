#include "result.h"

#include <new>

#include "arena.h"
#include "arena_memory.h"
#include "operations.h"

namespace kcnvrt {

Result run_request(const k_text_request_t& request) {
    // What lies in an arena is released with it.
    Result result(are_arenas_installed() ? text::run_and_leave_trees(&request, arena_memory()) : k_text_run(&request));
    if (failed_tree_allocations() != 0) throw std::bad_alloc();
    return result;
}

bool has_warnings(const k_text_result_t* result) {
    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i)
        if (problem.severity != K_TEXT_NOTE) return true;
    return false;
}

std::string_view output_of(const k_text_result_t* result) {
    std::size_t length = 0;
    const char* const output = k_text_output(result, &length);
    return {output, length};
}

}  // namespace kcnvrt
