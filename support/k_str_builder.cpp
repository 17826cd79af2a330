// The string that grows.
#include <cstdlib>
#include <cstring>

#include "k_str.h"
#include "shortage.h"

using kcnvrt::noted;

namespace {

constexpr uint32_t kFirstCapacity = 32;

// Twice the capacity until `length` characters and the NUL fit; 0 when they never do.
uint32_t capacity_for(uint32_t capacity, uint64_t length) {
    if (length >= UINT32_MAX) return 0;
    uint64_t wanted = capacity;
    while (wanted <= length) wanted *= 2;
    return wanted > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(wanted);
}

// The old text is released only after the new one is complete, so that a string can be appended to itself.
int append(k_string_t* string, const char* text, size_t count) {
    if (count >= UINT32_MAX) return -1;
    const uint64_t length = uint64_t{string->length} + count;
    const uint32_t capacity = capacity_for(string->capacity, length);
    if (capacity == 0) return -1;
    char* old = nullptr;
    if (capacity != string->capacity) {
        auto* grown = static_cast<char*>(noted(malloc(capacity)));
        if (grown == nullptr) return -1;
        memcpy(grown, string->text, string->length);
        old = string->text;
        string->text = grown;
        string->capacity = capacity;
    }
    memcpy(string->text + string->length, text, count);
    string->length = static_cast<uint32_t>(length);
    string->text[length] = '\0';
    free(old);
    return 0;
}

}  // namespace

k_string_t* string_init(int) {
    auto* string = static_cast<k_string_t*>(noted(malloc(sizeof(k_string_t))));
    auto* text = static_cast<char*>(noted(malloc(kFirstCapacity)));
    if (string == nullptr || text == nullptr) {
        free(string);
        free(text);
        return nullptr;
    }
    text[0] = '\0';
    *string = {text, 0, kFirstCapacity};
    return string;
}

k_string_t* string_init_chars(const char* text) {
    k_string_t* string = string_init(0);
    if (string_add(string, text) == 0) return string;
    string_free(string);
    return nullptr;
}

int string_add(k_string_t* string, const char* text) {
    if (string == nullptr || text == nullptr) return 0;
    return append(string, text, strlen(text));
}

int string_add_string_new(k_string_t* string, k_string_t* other) {
    if (other == nullptr) return 0;
    const int result = string == nullptr ? 0 : append(string, other->text, other->length);
    if (other != string) string_free(other);
    return result;
}

void string_free(k_string_t* string) {
    if (string == nullptr) return;
    free(string->text);
    free(string);
}
