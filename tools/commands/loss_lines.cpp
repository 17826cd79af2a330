#include "commands/loss_lines.h"

#include "print/json_line.h"
#include "print/shortened.h"

namespace kcnvrt {

namespace {

// Of a value in a line; what is longer is said by its beginning and its end.
constexpr std::size_t kMostColumns = 60;

std::string shown(const char* value) {
    return shortened(value, kMostColumns);
}

std::string words_of(const k_text_loss_t& loss) {
    const std::string kind = std::string("lost: ") + loss_kind_name(loss.kind) + " ";
    if (loss.before == nullptr) return kind + shown(loss.after);
    if (loss.after != nullptr) return kind + shown(loss.before) + " to " + shown(loss.after);
    const char* const rest = loss.kind == K_TEXT_CHANGED ? ", which is used but does not come back" : "";
    return kind + shown(loss.before) + rest;
}

// Calls for each loss of a result.
template <class Take>
void for_each(const k_text_result_t* result, Take take) {
    k_text_loss_t loss;
    loss.size = sizeof loss;
    for (std::size_t i = 0; k_text_loss(result, i, &loss) == 0; ++i) take(loss);
}

// The same with a warning of it, which lives as long as the call.
template <class Take>
void for_each_warning(const k_text_result_t* result, std::string_view file, Take take) {
    for_each(result, [&](const k_text_loss_t& loss) {
        const std::string words = words_of(loss);
        Message message;
        message.file = file;
        message.line = loss.line;
        message.column = loss.column;
        message.pointer = loss.pointer;
        message.severity = K_TEXT_WARNING;
        message.function = "losses";
        message.text = words;
        take(message);
    });
}

std::string_view json_or_null(const char* json) {
    return json == nullptr ? "null" : json;
}

}  // namespace

const char* loss_kind_name(uint32_t kind) {
    switch (kind) {
        case K_TEXT_DROPPED:
            return "dropped";
        case K_TEXT_CUT:
            return "cut";
        case K_TEXT_DEFAULTED:
            return "defaulted";
        case K_TEXT_RENUMBERED:
            return "renumbered";
        default:
            return "changed";
    }
}

void append_losses(std::string& lines, const k_text_result_t* result, std::string_view file, bool has_colors) {
    for_each_warning(result, file,
                     [&](const Message& message) { append_message(lines, message, ErrorFormat::kText, has_colors); });
}

void append_json_losses(std::string& lines, const k_text_result_t* result, std::string_view file) {
    for_each(result, [&](const k_text_loss_t& loss) {
        JsonLine()
            .text("file", file)
            .place("line", loss.line)
            .place("column", loss.column)
            .text("pointer", loss.pointer)
            .text("kind", loss_kind_name(loss.kind))
            .json("before", json_or_null(loss.before))
            .json("after", json_or_null(loss.after))
            .append_to(lines);
    });
}

void print_losses(const k_text_result_t* result, std::string_view file, const Messages& messages) {
    for_each_warning(result, file, [&](const Message& message) { messages.print(message); });
}

}  // namespace kcnvrt
