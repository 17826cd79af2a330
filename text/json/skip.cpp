#include "json/skip.h"

#include <algorithm>

#include "json/escape.h"
#include "json/utf8.h"

namespace kcnvrt::text {

namespace {

constexpr std::string_view kEndOfWord = " \t\n\r\"[]{},:";

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
    const char* at = name.data();
    const char* const end = at + name.size();
    while (at != end) {
        const Escape escape = *at == '\\' ? read_escape(at, end) : Escape{static_cast<unsigned char>(*at), 0};
        at += std::max<size_t>(escape.length, 1);
        char* const place = token.room(4);
        if (place == nullptr) return false;
        if (escape.code == '~' || escape.code == '/') {
            place[0] = '~';
            place[1] = escape.code == '~' ? '0' : '1';
            token.advance_to(place + 2);
        } else if (escape.length == 0) {
            place[0] = static_cast<char>(escape.code);
            token.advance_to(place + 1);
        } else {
            token.advance_to(put_utf8(escape.code, place));
        }
    }
    return true;
}

}  // namespace kcnvrt::text
