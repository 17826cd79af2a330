// notation.h: what the two ways of printing a real share.
#pragma once

#include <cstring>

namespace kcnvrt::text {

// Writes a number in the notation of json_dumps, as "%.17g" would and with ".0" where nothing else says that it is a
// real. It is given by the fewest digits that it needs, the first of which stands before the point, and the power of
// ten.
inline char* print_digits(bool is_negative, const char* digits, int count, int exponent, char* place) {
    constexpr int kMostDigits = 17;
    const auto put = [&place](const char* bytes, int length) {
        std::memcpy(place, bytes, static_cast<size_t>(length));
        place += length;
    };
    const auto put_zeros = [&place](int length) {
        for (int i = 0; i < length; ++i) *place++ = '0';
    };
    if (is_negative) *place++ = '-';
    if (exponent < -4 || exponent >= kMostDigits) {
        put(digits, 1);
        if (count > 1) *place++ = '.';
        put(digits + 1, count - 1);
        *place++ = 'e';
        if (exponent < 0) *place++ = '-';
        const int power = exponent < 0 ? -exponent : exponent;
        if (power >= 100) *place++ = static_cast<char>('0' + power / 100);
        if (power >= 10) *place++ = static_cast<char>('0' + power / 10 % 10);
        *place++ = static_cast<char>('0' + power % 10);
    } else if (exponent < 0) {
        put("0.", 2);
        put_zeros(-exponent - 1);
        put(digits, count);
    } else {
        const int whole = exponent + 1;
        put(digits, count < whole ? count : whole);
        put_zeros(whole - count);
        *place++ = '.';
        if (count <= whole) {
            *place++ = '0';
        } else {
            put(digits + whole, count - whole);
        }
    }
    return place;
}

}  // namespace kcnvrt::text
