#include "messages.h"

namespace kcnvrt::text {

namespace {

// Some messages end with a line break; null when memory ends.
const char* without_line_break(const char* message, KeptTexts& texts) {
    std::string_view text(message);
    if (!text.ends_with('\n')) return message;
    text.remove_suffix(1);
    return texts.keep(text);
}

}  // namespace

void add_messages(const Source& source, k_text_result_t& result) {
    const k_err_t* const record = result.record.get();
    for (size_t i = 0; i < k_err_count(record); ++i) {
        const char* const message = without_line_break(k_err_message(record, i), result.texts);
        if (message == nullptr) return result.run_out_of_memory();
        result.add({.which = source.which, .function = k_err_function(record, i), .message = message});
    }
}

}  // namespace kcnvrt::text
