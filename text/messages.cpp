#include "messages.h"

#include "places.h"

namespace kcnvrt::text {

namespace {

void add_printed_lines(const Source& source, const char* printer, k_text_result_t& result) {
    const k_err_t* const record = result.record.get();
    for (size_t i = 0; i < k_err_printed_count(record); ++i) {
        const char* const line = k_err_printed(record, i);
        if (*line == '\0') continue;
        result.add({.which = source.which,
                    .severity = K_TEXT_NOTE,
                    .pointer = printer,
                    .function = "diagnostic",
                    .message = line});
    }
}

// Some messages end with a line break; null when memory ends.
const char* without_line_break(const char* message, KeptTexts& texts) {
    std::string_view text(message);
    if (!text.ends_with('\n')) return message;
    text.remove_suffix(1);
    return texts.keep(text);
}

void add_reports(const Source& source, k_text_result_t& result) {
    const k_err_t* const record = result.record.get();
    for (size_t i = 0; i < k_err_count(record); ++i) {
        const char* const message = without_line_break(k_err_message(record, i), result.texts);
        if (message == nullptr) return result.run_out_of_memory();
        const bool is_counted = k_err_is_counted(record, i) != 0;
        result.add({.which = source.which,
                    .severity = is_counted ? K_TEXT_ERROR : K_TEXT_WARNING,
                    .pointer = k_err_pointer(record, i),
                    .function = k_err_function(record, i),
                    .message = message});
    }
}

}  // namespace

void add_messages(const Source& source, const char* printer, k_text_result_t& result) {
    add_printed_lines(source, printer, result);
    add_reports(source, result);
    find_places(source, result);
}

}  // namespace kcnvrt::text
