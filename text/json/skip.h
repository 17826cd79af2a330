// skip.h: passing over parts of a JSON text without looking at more than where they end. Offsets go in and come out;
// none is beyond the end of the text.
#pragma once

#include <cstddef>
#include <string_view>

#include "basis/buffer.h"

namespace kcnvrt::text {

// How many objects and arrays Jansson's parser accepts inside one another.
inline constexpr int kMostLevels = 2048;

constexpr bool is_blank(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

size_t skip_blanks(std::string_view text, size_t at);

// From an opening quote to behind the closing one.
size_t skip_string(std::string_view text, size_t at);

// From the first byte of a value to behind its last; the same offset where no value starts.
size_t skip_value(std::string_view text, size_t at);

// Appends a member's name, given as it stands between its quotes, as a JSON Pointer writes it. False when memory ends.
bool append_token(std::string_view name, Buffer& token);

}  // namespace kcnvrt::text
