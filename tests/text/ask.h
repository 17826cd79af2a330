// ask.h: requests in one line.
#pragma once

#include <k_cnvrt_text.h>

#include <memory>
#include <string>
#include <string_view>

struct FreeResult {
    void operator()(k_text_result_t* result) const { k_text_free(result); }
};
using Result = std::unique_ptr<k_text_result_t, FreeResult>;

inline k_text_request_t request_for(uint32_t operation, std::string_view text) {
    k_text_request_t request = {};
    request.size = sizeof request;
    request.operation = operation;
    request.indent = K_TEXT_COMPACT;
    request.text = text.data();
    request.text_length = text.size();
    return request;
}

inline k_text_request_t request_for(uint32_t operation, std::string_view text, std::string_view other) {
    k_text_request_t request = request_for(operation, text);
    request.other = other.data();
    request.other_length = other.size();
    return request;
}

inline Result ask(const k_text_request_t& request) {
    return Result(k_text_run(&request));
}

inline Result ask_with(uint32_t flags, k_text_request_t request) {
    request.flags |= flags;
    return ask(request);
}

inline std::string output_of(const Result& result) {
    size_t length = 0;
    const char* const output = k_text_output(result.get(), &length);
    return output == nullptr ? "(none)" : std::string(output, length);
}

inline k_text_problem_t problem_of(const Result& result, size_t index = 0) {
    k_text_problem_t problem = {};
    problem.size = sizeof problem;
    problem.function = problem.message = "(none)";
    k_text_problem(result.get(), index, &problem);
    return problem;
}
