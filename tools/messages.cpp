#include "messages.h"

#include <unistd.h>

#include <array>
#include <cerrno>
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

// A control character of the second set (U+0080 to U+009F) can move a cursor, too.
bool starts_long_control(std::string_view text) {
    return text.size() >= 2 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0;
}

// A name or a message may hold anything; what reaches the terminal stays on one line and moves no cursor.
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

void append_number(std::string& line, std::size_t number) {
    line += std::to_string(number);
}

void append_text_line(std::string& line, const Message& message) {
    append_printable(line, message.file);
    line += ':';
    if (message.line != 0) {
        append_number(line, message.line);
        line += ':';
        append_number(line, message.column);
        line += ':';
    }
    line += ' ';
    line += message.severity;
    line += ": ";
    if (message.pointer != nullptr && *message.pointer != '\0') {
        append_printable(line, message.pointer);
        line += ": ";
    }
    append_printable(line, message.text);
    line += " [";
    append_printable(line, message.function);
    line += "]\n";
}

void append_member(std::string& line, const char* name) {
    line += line.empty() ? "{\"" : ", \"";
    line += name;
    line += "\": ";
}

void append_text_member(std::string& line, const char* name, std::string_view text) {
    append_member(line, name);
    append_json_string(line, text);
}

void append_number_member(std::string& line, const char* name, std::size_t number) {
    append_member(line, name);
    if (number == 0) {
        line += "null";
    } else {
        append_number(line, number);
    }
}

void append_json_line(std::string& line, const Message& message) {
    append_text_member(line, "file", message.file);
    append_number_member(line, "line", message.line);
    append_number_member(line, "column", message.column);
    if (message.pointer != nullptr) {
        append_text_member(line, "pointer", message.pointer);
    } else {
        append_member(line, "pointer");
        line += "null";
    }
    append_text_member(line, "severity", message.severity);
    append_text_member(line, "function", message.function);
    append_text_member(line, "message", message.text);
    line += "}\n";
}

// Lines of several processes that share a pipe stay whole as long as each is one write. There is nobody to tell of a
// write that fails.
void write_to_stderr(std::string_view line) {
    while (!line.empty()) {
        const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
        if (written < 0 && errno != EINTR) return;
        if (written > 0) line.remove_prefix(static_cast<std::size_t>(written));
    }
}

const char* name_of(uint32_t severity) {
    switch (severity) {
        case K_TEXT_WARNING:
            return "warning";
        case K_TEXT_NOTE:
            return "note";
        default:
            return "error";
    }
}

}  // namespace

void Messages::print(const Message& message) const {
    std::string line;
    (format_ == ErrorFormat::kJson ? append_json_line : append_text_line)(line, message);
    write_to_stderr(line);
}

void Messages::print(std::string_view file, std::string_view function, std::string_view text) const {
    Message message;
    message.file = file;
    message.function = function;
    message.text = text;
    print(message);
}

void Messages::print(const k_text_result_t* result, const std::string& text_file, const std::string* other_file) const {
    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i) {
        Message message;
        message.file = problem.which == K_TEXT_IN_TEXT    ? std::string_view(text_file)
                       : problem.which == K_TEXT_IN_OTHER ? std::string_view(*other_file)
                                                          : std::string_view("kcnvrt");
        message.line = problem.line;
        message.column = problem.column;
        message.pointer = problem.pointer;
        message.severity = name_of(problem.severity);
        message.function = problem.function;
        message.text = problem.message;
        print(message);
    }
}

void Messages::print_lines(std::string_view file, std::string_view function, std::string_view text) const {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (!line.empty()) print(file, function, line);
        text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
    }
}

}  // namespace kcnvrt
