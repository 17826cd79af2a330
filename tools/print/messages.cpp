#include "print/messages.h"

#include <unistd.h>

#include <cerrno>
#include <set>
#include <utility>

#include "print/json_line.h"
#include "print/printable.h"

namespace kcnvrt {

namespace {

// How a severity looks.
struct Look {
    const char* name;
    const char* color;
};

constexpr const char* kBold = "\x1b[1m";
constexpr const char* kMarkColor = "\x1b[1;32m";
constexpr const char* kPlain = "\x1b[m";

Look look_of(uint32_t severity) {
    switch (severity) {
        case K_TEXT_WARNING:
            return {"warning", "\x1b[1;35m"};
        case K_TEXT_NOTE:
            return {"note", "\x1b[1;36m"};
        default:
            return {"error", "\x1b[1;31m"};
    }
}

void append_number(std::string& line, std::size_t number) {
    line += std::to_string(number);
}

void append_place(std::string& line, const Message& message) {
    append_printable(line, message.file);
    line += ':';
    if (message.line == 0) return;
    append_number(line, message.line);
    line += ':';
    append_number(line, message.column);
    line += ':';
}

void append_text_line(std::string& line, const Message& message, bool has_colors) {
    const Look look = look_of(message.severity);
    if (has_colors) line += kBold;
    append_place(line, message);
    line += ' ';
    if (has_colors) line += look.color;
    line += look.name;
    line += ':';
    if (has_colors) line += kPlain;
    line += ' ';
    if (message.pointer != nullptr && *message.pointer != '\0') {
        append_printable(line, message.pointer);
        line += ": ";
    }
    append_printable(line, message.text);
    line += " [";
    append_printable(line, message.function);
    line += "]\n";
}

void append_json_line(std::string& line, const Message& message, bool is_record) {
    JsonLine object;
    object.text("file", message.file).place("line", message.line);
    if (is_record) object.number("offset", 0);
    object.place("column", message.column);
    if (is_record) object.json("id", "null");
    object.text_or_null("pointer", message.pointer)
        .text("severity", severity_name(message.severity))
        .text("function", message.function)
        .text("message", message.text)
        .append_to(line);
}

// An excerpt that fits into the columns, which count otherwise than characters where some are wide.
bool find_excerpt(k_text_result_t* result, std::size_t index, const Source& source, std::size_t columns,
                  k_text_excerpt_t& excerpt) {
    std::size_t width = columns;
    for (int attempts = 0; attempts < 4; ++attempts) {
        if (k_text_excerpt(result, index, source.text.bytes.get(), source.text.size, width, &excerpt) != 0)
            return false;
        const std::size_t taken = columns_of(excerpt.line);
        if (taken <= columns) return true;
        width = width > taken - columns ? width - (taken - columns) : 0;
    }
    return true;
}

// The line of the source, and a caret under the value:
//     212 | "auth": "chap",
//         |         ^~~~~~
void append_excerpt(std::string& lines, k_text_result_t* result, std::size_t index, const Source& source,
                    std::size_t line_number, bool has_colors) {
    const std::string number = "  " + std::to_string(line_number);
    const std::size_t gutter = number.size() + 3;
    const std::size_t columns = terminal_columns();
    k_text_excerpt_t excerpt;
    excerpt.size = sizeof excerpt;
    if (!find_excerpt(result, index, source, columns > gutter ? columns - gutter : 0, excerpt)) return;

    const std::size_t before = columns_of({excerpt.line, excerpt.mark});
    const std::size_t marked = columns_of({excerpt.line + excerpt.mark, excerpt.mark_length});
    lines.append(number).append(" | ").append(excerpt.line).append("\n");
    lines.append(number.size(), ' ').append(" | ").append(before, ' ');
    if (has_colors) lines += kMarkColor;
    lines.append("^").append(marked > 1 ? marked - 1 : 0, '~');
    if (has_colors) lines += kPlain;
    lines += '\n';
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

}  // namespace

const char* severity_name(uint32_t severity) {
    return look_of(severity).name;
}

Message message_of(const k_text_problem_t& problem, const Source& text, const Source& other) {
    const Source& source = problem.which == K_TEXT_IN_OTHER ? other : text;
    Message message;
    message.file = problem.which == K_TEXT_IN_REQUEST ? "kcnvrt" : std::string_view(source.file);
    message.line = problem.line;
    message.column = problem.column;
    message.pointer = problem.pointer;
    message.severity = problem.severity;
    message.function = problem.function;
    message.text = problem.message;
    return message;
}

void append_message(std::string& lines, const Message& message, ErrorFormat format, bool has_colors) {
    if (format == ErrorFormat::kText) {
        append_text_line(lines, message, has_colors);
    } else {
        append_json_line(lines, message, format == ErrorFormat::kRecords);
    }
}

Messages::Messages(ErrorFormat format, ColorChoice color, std::string* kept)
    : format_(format), has_colors_(stderr_has_colors(color)), shows_lines_(stderr_is_terminal()), kept_(kept) {}

void Messages::put(std::string_view lines) const {
    if (kept_ != nullptr) {
        kept_->append(lines);
    } else {
        write_to_stderr(lines);
    }
}

void Messages::print(const Message& message) const {
    std::string line;
    append_message(line, message, format_, has_colors_);
    put(line);
}

void Messages::print(std::string_view file, std::string_view function, std::string_view text) const {
    Message message;
    message.file = file;
    message.function = function;
    message.text = text;
    print(message);
}

void Messages::print(k_text_result_t* result, const Source& text, const Source& other) const {
    std::string lines;
    std::set<std::pair<uint32_t, std::size_t>> shown;  // places whose line is on the screen already
    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i) {
        const Source& source = problem.which == K_TEXT_IN_OTHER ? other : text;
        lines.clear();
        append_message(lines, message_of(problem, text, other), format_, has_colors_);
        if (shows_lines_ && format_ == ErrorFormat::kText && problem.line != 0 &&
            shown.emplace(problem.which, problem.offset).second)
            append_excerpt(lines, result, i, source, problem.line, has_colors_);
        put(lines);
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
