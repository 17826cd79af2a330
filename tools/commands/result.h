// A result of the text layer that releases itself, and asking for one.
#pragma once

#include <k_cnvrt_text.h>

#include <memory>
#include <string_view>

namespace kcnvrt {

struct FreeResult {
    void operator()(k_text_result_t* result) const { k_text_free(result); }
};
using Result = std::unique_ptr<k_text_result_t, FreeResult>;

// Throws std::bad_alloc where a tree could not be made whole: it may look like any other.
Result run_request(const k_text_request_t& request);

// Whether anything was found that rejects a configuration.
bool has_errors(const k_text_result_t* result);

// Whether anything was left out, of a text that was converted.
bool has_warnings(const k_text_result_t* result);

// Empty where there is none.
std::string_view output_of(const k_text_result_t* result);

}  // namespace kcnvrt
