#include "commands/result.h"

#include <new>

#include "memory/arena.h"
#include "memory/arena_memory.h"
#include "operations.h"

namespace kcnvrt {

namespace {

template <class IsMeant>
bool any_problem(const k_text_result_t* result, IsMeant is_meant) {
    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i)
        if (is_meant(problem.severity)) return true;
    return false;
}

}  // namespace

Result run_request(const k_text_request_t& request) {
    // What lies in an arena is released with it.
    Result result(are_arenas_installed() ? text::run_and_leave_trees(&request, arena_memory()) : k_text_run(&request));
    if (failed_tree_allocations() != 0) throw std::bad_alloc();
    return result;
}

bool has_errors(const k_text_result_t* result) {
    return any_problem(result, [](uint32_t severity) { return severity == K_TEXT_ERROR; });
}

bool has_warnings(const k_text_result_t* result) {
    return any_problem(result, [](uint32_t severity) { return severity != K_TEXT_NOTE; });
}

std::string_view output_of(const k_text_result_t* result) {
    std::size_t length = 0;
    const char* const output = k_text_output(result, &length);
    return {output, length};
}

}  // namespace kcnvrt
