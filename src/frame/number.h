// number.h: texts read as numbers, by the rules that the fields share.
#pragma once

#include <climits>
#include <cstdint>
#include <string_view>

namespace kcnvrt {

constexpr bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

// The whole text as an unsigned 32-bit decimal number: digits and nothing else. The strict reading of k_str.h for text
// of known length.
inline bool read_strictly(std::string_view text, uint32_t& number) {
    uint64_t value = 0;
    for (const char character : text) {
        if (!is_digit(character)) return false;
        value = value * 10 + static_cast<uint64_t>(character - '0');
        if (value > UINT32_MAX) return false;
    }
    number = static_cast<uint32_t>(value);
    return !text.empty();
}

// A text as `atoi` reads it: leading blanks, a sign, digits, whatever follows; but saturating at INT_MIN and INT_MAX.
inline int read_loosely(std::string_view text) {
    size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || (text[at] >= '\t' && text[at] <= '\r'))) ++at;
    const bool negative = at < text.size() && text[at] == '-';
    if (negative || (at < text.size() && text[at] == '+')) ++at;
    int64_t value = 0;
    for (; at < text.size() && is_digit(text[at]); ++at) {
        value = value * 10 + (text[at] - '0');
        if (value > INT_MAX) return negative ? INT_MIN : INT_MAX;
    }
    return static_cast<int>(negative ? -value : value);
}

}  // namespace kcnvrt
