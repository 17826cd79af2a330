// Addresses, prefixes and masks, by inet_pton.
#include "k_addr.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace {

constexpr int kV4Bits = 32;
constexpr int kV6Bits = 128;

bool read_v4(const char* text, uint32_t* address) {
    in_addr network{};
    if (text == nullptr || inet_pton(AF_INET, text, &network) != 1) return false;
    *address = ntohl(network.s_addr);
    return true;
}

bool is_address(int family, const char* text, size_t length) {
    char copy[INET6_ADDRSTRLEN];
    if (length >= sizeof copy) return false;
    memcpy(copy, text, length);
    copy[length] = '\0';
    in6_addr address;
    return inet_pton(family, copy, &address) == 1;
}

// One to three digits and nothing else, at most `bits`.
bool is_prefix_length(const char* text, int bits) {
    int length = 0;
    size_t digits = 0;
    for (; digits < 3 && text[digits] >= '0' && text[digits] <= '9'; ++digits)
        length = length * 10 + (text[digits] - '0');
    return digits > 0 && text[digits] == '\0' && length <= bits;
}

}  // namespace

int k_addr_v4_is_correct(const char* text) {
    uint32_t address = 0;
    return read_v4(text, &address);
}

int k_addr_is_ippfx_correct(int family, const char* text) {
    if (text == nullptr || (family != AF_INET && family != AF_INET6)) return 0;
    const char* slash = strchr(text, '/');
    if (slash == nullptr || !is_address(family, text, static_cast<size_t>(slash - text))) return 0;
    return is_prefix_length(slash + 1, family == AF_INET ? kV4Bits : kV6Bits);
}

int k_addr_v4_mask_to_prefix(const char* text) {
    uint32_t mask = 0;
    if (!read_v4(text, &mask)) return -1;
    const int prefix = std::countl_one(mask);
    return prefix == std::popcount(mask) ? prefix : -1;
}

int k_addr_v4_prefix_to_mask(int prefix, char* buffer, size_t size) {
    if (prefix < 0 || prefix > kV4Bits || buffer == nullptr) return -1;
    const uint32_t mask = prefix == 0 ? 0 : UINT32_MAX << (kV4Bits - prefix);
    char text[INET_ADDRSTRLEN + 1];  // one more than needed: g++ sees a byte after the end else
    char* end = text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        end = std::to_chars(end, text + sizeof text, mask >> shift & 255).ptr;
        *end++ = shift == 0 ? '\0' : '.';
    }
    const auto length = static_cast<size_t>(end - text);
    if (length > size) return -1;
    memcpy(buffer, text, length);
    return 0;
}
