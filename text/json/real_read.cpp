#include <jansson.h>

#include <array>
#include <cfloat>
#include <charconv>
#include <cstdint>

#include "json/real.h"

namespace kcnvrt::text {

namespace {

constexpr int kExactDigits = 15;
constexpr int kExactPower = 22;
constexpr std::array<double, kExactPower + 1> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

constexpr bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

// What a number consists of: digits, with the point moved behind the last, times a power of ten.
struct Parts {
    bool is_negative = false;
    int64_t digits = 0;
    int count = 0;  // of digits, without zeros in front
    int power = 0;
};

Parts parts_of(std::string_view number) {
    Parts parts;
    const char* at = number.data();
    const char* const end = at + number.size();
    parts.is_negative = *at == '-';
    if (parts.is_negative) ++at;
    for (bool is_fraction = false; at != end && (is_digit(*at) || *at == '.'); ++at) {
        if (*at == '.') {
            is_fraction = true;
            continue;
        }
        if ((parts.digits != 0 || *at != '0') && ++parts.count > kExactDigits) return parts;
        parts.digits = 10 * parts.digits + (*at - '0');
        if (is_fraction) --parts.power;
    }
    if (at == end) return parts;
    ++at;
    if (*at == '+') ++at;
    int power = 0;
    if (std::from_chars(at, end, power).ec != std::errc{}) power = kExactPower + 1;
    parts.power = power > kExactPower || power < -kExactPower ? power : parts.power + power;
    return parts;
}

// Few digits times a small power of ten are exact in one operation, where operations are those of doubles.
bool is_exact(const Parts& parts) {
    return FLT_EVAL_METHOD == 0 && parts.count <= kExactDigits && parts.power >= -kExactPower &&
           parts.power <= kExactPower;
}

double exact_value(const Parts& parts) {
    const auto whole = static_cast<double>(parts.digits);
    const double magnitude = parts.power < 0 ? whole / kPowers[static_cast<size_t>(-parts.power)]
                                             : whole * kPowers[static_cast<size_t>(parts.power)];
    return parts.is_negative ? -magnitude : magnitude;
}

// Jansson's parser knows what is too large, and the locale's point.
bool read_by_jansson(std::string_view number, double& value) {
    json_t* const real = json_loadb(number.data(), number.size(), JSON_DECODE_ANY, nullptr);
    const bool is_read = json_is_real(real);
    if (is_read) value = json_real_value(real);
    json_decref(real);
    return is_read;
}

}  // namespace

bool read_real(std::string_view number, double& value) {
    const Parts parts = parts_of(number);
    if (!is_exact(parts)) return read_by_jansson(number, value);
    value = exact_value(parts);
    return true;
}

}  // namespace kcnvrt::text
