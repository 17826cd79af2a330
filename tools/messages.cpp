#include "messages.h"

#include <array>
#include <cstdio>
#include <string>

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

// A name or a message may hold anything; what reaches the terminal stays on one line and moves no cursor.
void append_printable(std::string& line, std::string_view text) {
    for (const char byte : text) {
        if (is_control(static_cast<unsigned char>(byte)) && byte != '\t') {
            append_escaped_control(line, byte);
        } else {
            line += byte;
        }
    }
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

// File names need not be UTF-8, and JSON must be.
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

void append_text_line(std::string& lines, std::string_view source, std::string_view function,
                      std::string_view message) {
    append_printable(lines, source);
    lines += ": ";
    append_printable(lines, function);
    lines += ": ";
    append_printable(lines, message);
    lines += '\n';
}

void append_json_line(std::string& lines, std::string_view source, std::string_view function,
                      std::string_view message) {
    lines += "{\"source\": ";
    append_json_string(lines, source);
    lines += ", \"function\": ";
    append_json_string(lines, function);
    lines += ", \"message\": ";
    append_json_string(lines, message);
    lines += "}\n";
}

void append_line(std::string& lines, ErrorFormat format, std::string_view source, std::string_view function,
                 std::string_view message) {
    if (message.ends_with('\n')) message.remove_suffix(1);
    (format == ErrorFormat::kJson ? append_json_line : append_text_line)(lines, source, function, message);
}

void write_to_stderr(const std::string& lines) {
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

}  // namespace

void Messages::print(std::string_view source, std::string_view function, std::string_view message) const {
    std::string line;
    append_line(line, format_, source, function, message);
    write_to_stderr(line);
}

void Messages::print(std::string_view source, const k_err_t* record) const {
    std::string lines;
    const std::size_t count = k_err_count(record);
    for (std::size_t i = 0; i < count; ++i) {
        append_line(lines, format_, source, k_err_function(record, i), k_err_message(record, i));
    }
    write_to_stderr(lines);
}

void Messages::print_lines(std::string_view source, std::string_view function, std::string_view text) const {
    std::string lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (!line.empty()) append_line(lines, format_, source, function, line);
        text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
    }
    write_to_stderr(lines);
}

}  // namespace kcnvrt
