// utf8.h: what is a character in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kcnvrt::text {

// The length of the valid sequence that starts at `at`, which is not `end`; 0 where there is none. Overlong sequences,
// surrogates and what is beyond U+10FFFF are not valid.
inline size_t utf8_length(const char* at, const char* end) {
    const auto byte = [at](size_t i) { return static_cast<unsigned char>(at[i]); };
    const auto is_tail = [byte](size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const auto left = static_cast<size_t>(end - at);
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4 || left < 2) return 0;
    if (lead < 0xE0) return is_tail(1) ? 2 : 0;
    // The second byte decides what is overlong, a surrogate or too large.
    const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < least || byte(1) > most) return 0;
    if (left < 3 || !is_tail(2)) return 0;
    if (lead < 0xF0) return 3;
    return left >= 4 && is_tail(3) ? 4 : 0;
}

// Writes the character, at most four bytes, and returns the end.
inline char* put_utf8(uint32_t code, char* place) {
    const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        *place++ = static_cast<char>(code);
        return place;
    }
    if (code < 0x800) {
        *place++ = static_cast<char>(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            *place++ = static_cast<char>(0xE0 | code >> 12);
        } else {
            *place++ = static_cast<char>(0xF0 | code >> 18);
            *place++ = tail(12);
        }
        *place++ = tail(6);
    }
    *place++ = tail(0);
    return place;
}

}  // namespace kcnvrt::text
