#include "skip.h"

#include <algorithm>
#include <cstdint>

namespace kcnvrt::text {

namespace {

constexpr std::string_view kEndOfWord = " \t\n\r\"[]{},:";

bool is_blank(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

size_t skip_container(std::string_view text, size_t at) {
    size_t levels = 0;
    while (at < text.size()) {
        const char byte = text[at];
        if (byte == '"') {
            at = skip_string(text, at);
            continue;
        }
        ++at;
        if (byte == '{' || byte == '[') ++levels;
        if ((byte == '}' || byte == ']') && --levels == 0) break;
    }
    return at;
}

int digit_of(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 0;
}

// Of \u and four digits; what is no digit counts as 0.
uint32_t unit_at(std::string_view name, size_t at) {
    uint32_t unit = 0;
    for (size_t i = at + 2; i < at + 6 && i < name.size(); ++i)
        unit = unit << 4 | static_cast<uint32_t>(digit_of(name[i]));
    return unit;
}

bool append_code_point(uint32_t code, Buffer& token) {
    const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        const char bytes[] = {static_cast<char>(code)};
        return token.append({bytes, sizeof bytes});
    }
    if (code < 0x800) {
        const char bytes[] = {static_cast<char>(0xC0 | code >> 6), tail(0)};
        return token.append({bytes, sizeof bytes});
    }
    if (code < 0x10000) {
        const char bytes[] = {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
        return token.append({bytes, sizeof bytes});
    }
    const char bytes[] = {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
    return token.append({bytes, sizeof bytes});
}

struct Decoded {
    uint32_t code;
    size_t length;  // of the escape
};

Decoded decode_escape(std::string_view name, size_t at) {
    const char kind = at + 1 < name.size() ? name[at + 1] : '\\';
    switch (kind) {
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
            break;
        default:
            return {static_cast<unsigned char>(kind), 2};
    }
    const uint32_t unit = unit_at(name, at);
    if ((unit & 0xFC00) != 0xD800) return {unit, 6};
    return {0x10000 + ((unit & 0x3FF) << 10) + (unit_at(name, at + 6) & 0x3FF), 12};
}

bool append_byte_of_token(char byte, Buffer& token) {
    if (byte == '~') return token.append("~0");
    if (byte == '/') return token.append("~1");
    return token.append({&byte, 1});
}

}  // namespace

size_t skip_blanks(std::string_view text, size_t at) {
    while (at < text.size() && is_blank(text[at])) ++at;
    return at;
}

size_t skip_string(std::string_view text, size_t at) {
    for (++at; at < text.size(); ++at) {
        if (text[at] == '"') return at + 1;
        if (text[at] == '\\') ++at;
    }
    return text.size();
}

size_t skip_value(std::string_view text, size_t at) {
    if (text[at] == '"') return skip_string(text, at);
    if (text[at] == '{' || text[at] == '[') return skip_container(text, at);
    return std::min(text.find_first_of(kEndOfWord, at), text.size());
}

bool append_token(std::string_view name, Buffer& token) {
    for (size_t at = 0; at < name.size();) {
        if (name[at] != '\\') {
            if (!append_byte_of_token(name[at++], token)) return false;
            continue;
        }
        const Decoded decoded = decode_escape(name, at);
        at += decoded.length;
        const bool is_special = decoded.code == '~' || decoded.code == '/';
        if (is_special ? !append_byte_of_token(static_cast<char>(decoded.code), token)
                       : !append_code_point(decoded.code, token))
            return false;
    }
    return true;
}

}  // namespace kcnvrt::text
