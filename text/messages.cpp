#include "messages.h"

#include <algorithm>

#include "json/pointer.h"
#include "places.h"
#include "secrets.h"

namespace kcnvrt::text {

namespace {

void add_printed_lines(const Source& source, const Subject& subject, const char* printer, k_text_result_t& result) {
    if (!pointer_in_text(subject, printer, result.texts, printer)) return result.run_out_of_memory();
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

// Replaces the value wherever the message shows it; null when memory ends.
const char* mask(std::string_view message, std::string_view value, KeptTexts& texts) {
    Buffer masked;
    bool has_memory = true;
    while (has_memory && !message.empty()) {
        const size_t shown = message.find(value);
        const size_t length = std::min(shown, message.size());
        has_memory = masked.append({message.data(), length});
        message.remove_prefix(length);
        if (shown == std::string_view::npos) break;
        has_memory = has_memory && masked.append(kMask);
        message.remove_prefix(value.size());
    }
    return has_memory ? texts.keep(masked.view()) : nullptr;
}

// What a message may show of a secret: the text at its place.
std::string_view secret_at(const Subject& subject, const char* pointer) {
    if (pointer == nullptr || !(leads_to_secret(subject.place) || leads_to_secret(pointer))) return {};
    const json_t* const value = value_at(subject.tree, pointer);
    return json_is_string(value) ? std::string_view(json_string_value(value), json_string_length(value))
                                 : std::string_view();
}

// Without the line break that some messages end with, and without a secret. Null when memory ends.
const char* shown_message(const char* message, std::string_view secret, KeptTexts& texts) {
    std::string_view text(message);
    if (text.ends_with('\n')) text.remove_suffix(1);
    if (!secret.empty() && text.find(secret) != std::string_view::npos) return mask(text, secret, texts);
    return message[text.size()] == '\0' ? message : texts.keep(text);
}

void add_reports(const Source& source, const Subject& subject, k_text_result_t& result) {
    const k_err_t* const record = result.record.get();
    for (size_t i = 0; i < k_err_count(record); ++i) {
        const char* const message = message_of(record, i, subject, result.shows_secrets, result.texts);
        const char* pointer;
        if (message == nullptr || !pointer_in_text(subject, k_err_pointer(record, i), result.texts, pointer))
            return result.run_out_of_memory();
        const bool is_counted = k_err_is_counted(record, i) != 0;
        result.add({.which = source.which,
                    .severity = is_counted ? K_TEXT_ERROR : K_TEXT_WARNING,
                    .pointer = pointer,
                    .function = k_err_function(record, i),
                    .message = message});
    }
}

// Null when memory ends.
const char* note_of(const TakenOut& taken, KeptTexts& texts) {
    constexpr const char* kLeftOut = "left out of the partial result";
    if (taken.why == nullptr) return kLeftOut;
    Buffer words;
    const bool is_written = words.append(kLeftOut) && words.append(": ") && words.append(taken.why);
    return is_written ? texts.keep(words.view()) : nullptr;
}

}  // namespace

const char* message_of(const k_err_t* record, size_t index, const Subject& subject, bool shows_secrets,
                       KeptTexts& texts) {
    const std::string_view secret =
        shows_secrets ? std::string_view() : secret_at(subject, k_err_pointer(record, index));
    return shown_message(k_err_message(record, index), secret, texts);
}

void add_notes(const Source& source, const Subject& subject, const Part& part, k_text_result_t& result) {
    Problem note;
    note.which = source.which;
    note.severity = K_TEXT_NOTE;
    note.function = "partial";
    if (!part.converted && part.taken_out.is_empty()) {
        note.message = "there is no part that could be converted";
        return result.add(note);
    }
    for (const TakenOut& taken : part.taken_out) {
        note.message = note_of(taken, result.texts);
        if (note.message == nullptr || !pointer_in_text(subject, taken.pointer, result.texts, note.pointer))
            return result.run_out_of_memory();
        result.add(note);
    }
    find_places(source, result);
}

void add_messages(const Source& source, const Subject& subject, const char* printer, k_text_result_t& result) {
    add_printed_lines(source, subject, printer, result);
    add_reports(source, subject, result);
    find_places(source, result);
}

}  // namespace kcnvrt::text
