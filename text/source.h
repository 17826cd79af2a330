// source.h: reading a text of a request.
#pragma once

#include <string_view>

#include "owned.h"
#include "result.h"

namespace kcnvrt::text {

// What a text has to be.
enum class Shape : uint8_t {
    kWhole,    // a configuration: an object
    kSection,  // an object or an array
    kAnyValue,
};

struct Source {
    uint32_t which;  // K_TEXT_IN_TEXT or K_TEXT_IN_OTHER
    std::string_view text;
    Shape shape;
};

// Null, with the problem and the status in the result, when the text is not what it has to be.
Json read_source(const Source& source, k_text_result_t& result);

}  // namespace kcnvrt::text
