#include "json/escape.h"

namespace kcnvrt::text {

namespace {

constexpr Escape kNone{0, 0};
constexpr size_t kUnitLength = 6;  // of \uXXXX
constexpr uint32_t kNoUnit = 0x10000;

uint32_t digit_of(char byte) {
    if (byte >= '0' && byte <= '9') return static_cast<uint32_t>(byte - '0');
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<uint32_t>(lower - 'a' + 10) : kNoUnit;
}

uint32_t read_unit(const char* at, const char* end) {
    if (end - at < static_cast<ptrdiff_t>(kUnitLength) || at[0] != '\\' || at[1] != 'u') return kNoUnit;
    uint32_t unit = 0;
    for (size_t i = 2; i < kUnitLength; ++i) {
        const uint32_t digit = digit_of(at[i]);
        if (digit == kNoUnit) return kNoUnit;
        unit = unit << 4 | digit;
    }
    return unit;
}

constexpr bool is_high(uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool is_low(uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

Escape read_character(const char* at, const char* end) {
    const uint32_t unit = read_unit(at, end);
    if (unit == kNoUnit || is_low(unit)) return kNone;
    if (!is_high(unit)) return {unit, kUnitLength};
    const uint32_t low = read_unit(at + kUnitLength, end);
    if (!is_low(low)) return kNone;
    return {0x10000 + ((unit & 0x3FF) << 10 | (low & 0x3FF)), 2 * kUnitLength};
}

}  // namespace

Escape read_escape(const char* at, const char* end) {
    if (end - at < 2) return kNone;
    switch (at[1]) {
        case '"':
        case '\\':
        case '/':
            return {static_cast<unsigned char>(at[1]), 2};
        case 'b':
            return {'\b', 2};
        case 'f':
            return {'\f', 2};
        case 'n':
            return {'\n', 2};
        case 'r':
            return {'\r', 2};
        case 't':
            return {'\t', 2};
        case 'u':
            return read_character(at, end);
        default:
            return kNone;
    }
}

}  // namespace kcnvrt::text
