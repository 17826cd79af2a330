#include <array>
#include <cfloat>
#include <charconv>
#include <cstdint>

#include "notation.h"
#include "real.h"

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

// The C++ library's from_chars for reals would need its exceptions and a thread-local variable, and so another library.
// A number of few digits times a small power of ten is exact in one operation; what is longer is left to the parser.
bool read_real(std::string_view number, double& value) {
    constexpr int kMostDigits = 15;
    constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (FLT_EVAL_METHOD != 0 || number.empty()) return false;
    const char* at = number.data();
    const char* const end = at + number.size();
    const bool is_negative = *at == '-';
    if (is_negative) ++at;
    int64_t digits = 0;
    int count = 0;
    int exponent = 0;
    bool is_fraction = false;
    for (; at != end && *at != 'e' && *at != 'E'; ++at) {
        if (*at == '.') {
            is_fraction = true;
            continue;
        }
        digits = digits * 10 + (*at - '0');
        if (digits != 0 && ++count > kMostDigits) return false;
        if (is_fraction) --exponent;
    }
    if (at != end) {
        int power = 0;
        if (++at != end && *at == '+') ++at;
        if (std::from_chars(at, end, power).ec != std::errc{} || power > 1000 || power < -1000) return false;
        exponent += power;
    }
    if (exponent < -22 || exponent > 22) return false;
    const auto whole = static_cast<double>(digits);
    const auto power = kPowers[static_cast<size_t>(exponent < 0 ? -exponent : exponent)];
    const double magnitude = exponent < 0 ? whole / power : whole * power;
    value = is_negative ? -magnitude : magnitude;
    return true;
}

}  // namespace kcnvrt::text
