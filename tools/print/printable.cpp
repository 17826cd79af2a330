#include "print/printable.h"

#include <array>
#include <cstdio>

namespace kcnvrt {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool is_control(unsigned char byte) {
    return byte < 0x20 || byte == 0x7f;
}

void append_escaped_control(std::string& line, char byte) {
    std::array<char, 8> escape;
    switch (byte) {
        case '\n':
            line += "\\n";
            return;
        case '\r':
            line += "\\r";
            return;
        default:
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned char>(byte));
            line += escape.data();
    }
}

// A control character of the second set (U+0080 to U+009F) can move a cursor, too.
bool starts_long_control(std::string_view text) {
    return text.size() >= 2 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0;
}

// The length of the UTF-8 sequence at the start of `text`, 0 where there is none.
std::size_t utf8_length(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
    }
    const auto second = static_cast<unsigned char>(text[1]);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool no_character = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    return overlong || no_character ? 0 : length;
}

}  // namespace

void append_printable(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const bool is_long = starts_long_control(text);
        if (is_long || (is_control(static_cast<unsigned char>(text[0])) && text[0] != '\t')) {
            append_escaped_control(line, text[is_long ? 1 : 0]);
        } else {
            line += text[0];
        }
        text.remove_prefix(is_long ? 2 : 1);
    }
}

void append_json_string(std::string& line, std::string_view text) {
    line += '"';
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            line += kReplacement;
        } else if (is_control(static_cast<unsigned char>(text[0]))) {
            append_escaped_control(line, text[0]);
        } else {
            if (text[0] == '"' || text[0] == '\\') line += '\\';
            line += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    line += '"';
}

}  // namespace kcnvrt
