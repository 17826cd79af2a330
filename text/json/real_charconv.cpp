#include <array>
#include <charconv>

#include "json/notation.h"
#include "json/real.h"

namespace kcnvrt::text {

// The C++ library prints d.ddde+dd, as few digits as it takes.
char* print_real(double value, char* place) {
    std::array<char, kLongestReal> text;
    const char* const end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific).ptr;
    std::array<char, kLongestReal> digits;
    int count = 0;
    const char* at = text.data();
    const bool is_negative = *at == '-';
    if (is_negative) ++at;
    for (; *at != 'e'; ++at)
        if (*at != '.') digits[static_cast<size_t>(count++)] = *at;
    ++at;
    if (*at == '+') ++at;
    int exponent = 0;
    std::from_chars(at, end, exponent);
    return print_digits(is_negative, digits.data(), count, exponent, place);
}

}  // namespace kcnvrt::text
