#include "record_problems.h"

#include "print/json_line.h"
#include "print/messages.h"

namespace kcnvrt {

void RecordProblems::add_error(const char* pointer, std::string_view message, std::size_t column) {
    const std::string text(message);
    k_text_problem_t problem = {};
    problem.severity = K_TEXT_ERROR;
    problem.function = "stream";
    problem.message = text.c_str();
    add({pointer, nullptr, column}, problem);
}

void RecordProblems::add_of_record(const k_text_problem_t& problem) {
    add({problem.pointer, nullptr, problem.column}, problem);
}

// A record is one line, so that columns add up. Inside a text they would count what the text holds: the place is that
// of the text, and what its pointers lead to is said beside it.
void RecordProblems::add_of_configuration(const k_text_problem_t& problem, std::size_t start) {
    if (pointers_.holds_text) return add({pointers_.at.c_str(), problem.pointer, start}, problem);
    const std::string pointer = problem.pointer == nullptr ? "" : pointers_.at + problem.pointer;
    const std::size_t column = problem.column == 0 ? 0 : start + problem.column - 1;
    add({problem.pointer == nullptr ? nullptr : pointer.c_str(), nullptr, column}, problem);
}

void RecordProblems::add(const Place& place, const k_text_problem_t& problem) {
    if (id_.empty()) id_ = id_of(record_.text, pointers_.id);
    JsonLine line;
    line.text("file", *record_.file)
        .place("line", record_.line)
        .number("offset", record_.offset)
        .place("column", place.column)
        .json("id", id_)
        .text_or_null("pointer", place.pointer);
    if (pointers_.holds_text) line.text_or_null("inner", place.inner);
    line.text("severity", severity_name(problem.severity))
        .text("function", problem.function)
        .text("message", problem.message)
        .append_to(lines_);
}

}  // namespace kcnvrt
