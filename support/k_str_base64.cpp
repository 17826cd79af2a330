// Base64 of texts.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "k_str.h"
#include "shortage.h"

using kcnvrt::noted;

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kPadding = '=';
constexpr uint8_t kNoDigit = 64;

// The value of each character of the alphabet; kNoDigit for every other byte.
constexpr auto kDigits = [] {
    std::array<uint8_t, 256> digits{};
    digits.fill(kNoDigit);
    for (uint8_t value = 0; value < 64; ++value) digits[static_cast<unsigned char>(kAlphabet[value])] = value;
    return digits;
}();

uint8_t digit_of(char c) {
    return kDigits[static_cast<unsigned char>(c)];
}

// Four characters for one to three bytes.
void encode_group(const char* bytes, size_t count, char* out) {
    uint32_t bits = 0;
    for (size_t i = 0; i < 3; ++i) bits = bits << 8 | (i < count ? static_cast<unsigned char>(bytes[i]) : 0u);
    for (size_t i = 0; i < 4; ++i) out[i] = i <= count ? kAlphabet[bits >> (18 - 6 * i) & 63] : kPadding;
}

// `count` bytes, one to three, from count + 1 digits. False where a character is no digit, and where a byte is NUL.
// Bits of the last digit beyond the bytes are not looked at: another encoder may have set them, and a password is not
// lost for it.
bool decode_group(const char* digits, size_t count, char* out) {
    uint32_t bits = 0;
    for (size_t i = 0; i <= count; ++i) {
        const uint8_t digit = digit_of(digits[i]);
        if (digit == kNoDigit) return false;
        bits |= static_cast<uint32_t>(digit) << (18 - 6 * i);
    }
    for (size_t i = 0; i < count; ++i) {
        out[i] = static_cast<char>(bits >> (16 - 8 * i) & 255);
        if (out[i] == '\0') return false;
    }
    return true;
}

size_t bytes_in_last_group(const char* group) {
    if (group[3] != kPadding) return 3;
    return group[2] != kPadding ? 2 : 1;
}

// `length` is a multiple of 4. The length of the decoded text goes to `decoded`.
bool decode_groups(const char* text, size_t length, char* out, size_t* decoded) {
    char* at = out;
    for (const char* group = text; group != text + length; group += 4) {
        const bool last = group + 4 == text + length;
        const size_t count = last ? bytes_in_last_group(group) : 3;
        if (!decode_group(group, count, at)) return false;
        at += count;
    }
    *decoded = static_cast<size_t>(at - out);
    return true;
}

}  // namespace

int k_str_base64_encode(const char* text, char** out) {
    if (text == nullptr || out == nullptr) return -1;
    const size_t length = strlen(text);
    const size_t groups = length / 3 + (length % 3 != 0);
    if (groups > (SIZE_MAX - 1) / 4) return -1;
    auto* encoded = static_cast<char*>(noted(malloc(groups * 4 + 1)));
    if (encoded == nullptr) return -1;
    for (size_t i = 0; i < groups; ++i) {
        const size_t left = length - 3 * i;
        encode_group(text + 3 * i, left < 3 ? left : 3, encoded + 4 * i);
    }
    encoded[groups * 4] = '\0';
    *out = encoded;
    return 0;
}

int k_str_base64_decode(const char* text, char** out) {
    if (text == nullptr || out == nullptr) return -1;
    const size_t length = strlen(text);
    if (length % 4 != 0) return -1;
    auto* decoded = static_cast<char*>(noted(malloc(length / 4 * 3 + 1)));
    if (decoded == nullptr) return -1;
    size_t decoded_length = 0;
    if (!decode_groups(text, length, decoded, &decoded_length)) {
        free(decoded);
        return -1;
    }
    decoded[decoded_length] = '\0';
    *out = decoded;
    return 0;
}
