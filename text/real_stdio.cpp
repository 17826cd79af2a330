#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "notation.h"
#include "real.h"

namespace kcnvrt::text {

namespace {

constexpr int kEnoughDigits = 17;

using Scientific = std::array<char, 40>;

// d.ddde+dd, with the locale's point.
Scientific with_digits(double value, int count) {
    Scientific text;
    std::snprintf(text.data(), text.size(), "%.*e", count - 1, value);
    return text;
}

bool is_enough(double value, int count) {
    return std::strtod(with_digits(value, count).data(), nullptr) == value;
}

// More digits never read back worse.
int fewest_digits(double value) {
    int too_few = 0;
    int enough = kEnoughDigits;
    while (enough - too_few > 1) {
        const int middle = (too_few + enough) / 2;
        (is_enough(value, middle) ? enough : too_few) = middle;
    }
    return enough;
}

}  // namespace

char* print_real(double value, char* place) {
    const double magnitude = std::fabs(value);
    const Scientific text = with_digits(magnitude, fewest_digits(magnitude));
    std::array<char, kEnoughDigits> digits;
    int count = 0;
    const char* at = text.data();
    for (; *at != 'e'; ++at)
        if (*at >= '0' && *at <= '9') digits[static_cast<size_t>(count++)] = *at;
    return print_digits(std::signbit(value), digits.data(), count, std::atoi(at + 1), place);
}

}  // namespace kcnvrt::text
