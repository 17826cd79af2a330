#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "json/notation.h"
#include "json/real.h"

namespace kcnvrt::text {

namespace {

constexpr int kEnoughDigits = 17;

// The point stands behind the first digit.
struct Decimal {
    std::array<char, kEnoughDigits> digits;
    int count;
    int exponent;
};

Decimal nearest(double value, int count) {
    std::array<char, 40> text;  // d.ddde+dd, with the locale's point
    std::snprintf(text.data(), text.size(), "%.*e", count - 1, value);
    Decimal decimal{{}, 0, 0};
    const char* at = text.data();
    for (; *at != 'e'; ++at)
        if (*at >= '0' && *at <= '9') decimal.digits[static_cast<size_t>(decimal.count++)] = *at;
    decimal.exponent = static_cast<int>(std::strtol(at + 1, nullptr, 10));
    return decimal;
}

// The next larger one of as many digits.
Decimal next(Decimal decimal) {
    for (auto i = static_cast<size_t>(decimal.count); i-- != 0;) {
        if (decimal.digits[i] != '9') {
            ++decimal.digits[i];
            return decimal;
        }
        decimal.digits[i] = '0';
    }
    decimal.digits[0] = '1';
    ++decimal.exponent;
    return decimal;
}

// Without a point, which is the locale's.
double value_of(const Decimal& decimal) {
    std::array<char, 40> text;
    std::snprintf(text.data(), text.size(), "%.*se%d", decimal.count, decimal.digits.data(),
                  decimal.exponent - decimal.count + 1);
    return std::strtod(text.data(), nullptr);
}

// Whether so many digits say what the value is. Below a power of two doubles stand closer together than above it, so
// that the nearest decimal may be another double's, and the one above is not.
bool is_enough(double value, int count, Decimal& decimal) {
    decimal = nearest(value, count);
    if (value_of(decimal) == value) return true;
    decimal = next(decimal);
    return value_of(decimal) == value;
}

Decimal fewest_digits(double value) {
    Decimal fewest = nearest(value, kEnoughDigits);
    for (int too_few = 0; fewest.count - too_few > 1;) {
        const int middle = (too_few + fewest.count) / 2;
        Decimal decimal;
        if (is_enough(value, middle, decimal)) {
            fewest = decimal;
        } else {
            too_few = middle;
        }
    }
    return fewest;
}

}  // namespace

char* print_real(double value, char* place) {
    const Decimal decimal = fewest_digits(std::fabs(value));
    return print_digits(std::signbit(value), decimal.digits.data(), decimal.count, decimal.exponent, place);
}

}  // namespace kcnvrt::text
