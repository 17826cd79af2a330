// Hashes, and numbers read strictly.
#include "k_str.h"

namespace {

constexpr uint64_t kLargestNumber = UINT32_MAX;

// The value of an ASCII digit or letter in any base up to 36; 36 for everything else.
constexpr int digit_value(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'z') return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
    return 36;
}

}  // namespace

uint32_t k_str_get_hash(const char* text) {
    uint32_t hash = 5381;
    for (; text != nullptr && *text != '\0'; ++text) hash = hash * 33 + static_cast<unsigned char>(*text);
    return hash;
}

int k_str_strict_strtoul(const char* text, int base, unsigned long* value) {
    if (text == nullptr || value == nullptr || base < 2 || base > 36 || *text == '\0') return -1;
    uint64_t number = 0;
    for (; *text != '\0'; ++text) {
        const int digit = digit_value(*text);
        if (digit >= base) return -1;
        number = number * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
        if (number > kLargestNumber) return -1;
    }
    *value = static_cast<unsigned long>(number);
    return 0;
}
