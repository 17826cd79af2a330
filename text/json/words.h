// words.h: eight bytes of a text at a time, the first in the lowest bits whatever the machine's order.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kcnvrt::text {

using Word = uint64_t;

inline constexpr size_t kWordSize = sizeof(Word);

constexpr Word repeated(unsigned char byte) {
    return Word{0x0101010101010101} * byte;
}

inline Word load(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    return word;
}

inline void store(Word word, char* bytes) {
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    std::memcpy(bytes, &word, sizeof word);
}

// The number of the first byte with a set bit; the word is not 0.
inline size_t first_byte(Word word) {
    return static_cast<size_t>(std::countr_zero(word)) / 8;
}

// Marks the bytes of a JSON string that do not stand for themselves, a quote, a backslash or a control character, and
// those that are not ASCII. The first mark is right; subtracting may carry on into the bytes above it.
inline Word special_bytes(Word word) {
    const Word quotes = (word ^ repeated('"')) - repeated(1);
    const Word backslashes = (word ^ repeated('\\')) - repeated(1);
    const Word controls = word - repeated(0x20);
    return (quotes | backslashes | controls | word) & repeated(0x80);
}

// The last bytes of a text, fewer than a word and at least one, with zeros behind them, the first of which is special.
inline Word load_rest(const char* bytes, size_t count) {
    const auto byte = [bytes](size_t i) { return Word{static_cast<unsigned char>(bytes[i])} << 8 * i; };
    if (count < 4) return byte(0) | byte(count / 2) | byte(count - 1);
    const auto half = [bytes](size_t i) {
        uint32_t four;
        std::memcpy(&four, bytes + i, sizeof four);
        if constexpr (std::endian::native == std::endian::big) four = __builtin_bswap32(four);
        return Word{four} << 8 * i;
    };
    return half(0) | half(count - 4);
}

// The first special byte of [at, end), or `end`.
inline const char* find_special(const char* at, const char* end) {
    for (; end - at >= static_cast<ptrdiff_t>(kWordSize); at += kWordSize)
        if (const Word marks = special_bytes(load(at)); marks != 0) return at + first_byte(marks);
    return at == end ? end : at + first_byte(special_bytes(load_rest(at, static_cast<size_t>(end - at))));
}

}  // namespace kcnvrt::text
