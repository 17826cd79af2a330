#include "print/numbers.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kcnvrt {

std::string grouped(std::size_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, ',');
    return digits;
}

std::string counted(std::size_t number, const char* one, const char* many) {
    return grouped(number) + " " + (number == 1 ? one : many);
}

std::string with_digits(double number, int digits) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%.*f", digits, number);
    return text.data();
}

std::string percent(std::size_t part, std::size_t whole) {
    if (part == 0) return "0 %";
    if (part == whole) return "100 %";
    const double exact = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    return with_digits(std::clamp(exact, 0.1, 99.9), 1) + " %";
}

}  // namespace kcnvrt
