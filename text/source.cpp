#include "source.h"

#include "json/reader.h"
#include "places.h"
#include "unreadable.h"

namespace kcnvrt::text {

namespace {

// A NUL inside a text is lost where a conversion handles the text as a C string, so only values that are compared and
// carried whole may hold one.
ReadOptions options_of(Shape shape) {
    const bool is_any = shape == Shape::kAnyValue;
    return {.any_value = is_any, .nul_in_strings = is_any};
}

// Of the word there, in a text that is no JSON: as far as letters and digits go.
size_t length_of_word(std::string_view text, size_t offset) {
    const auto is_part = [](unsigned char byte) {
        return byte >= 0x80 || (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z') ||
               byte == '+' || byte == '-' || byte == '.' || byte == '_';
    };
    size_t end = offset;
    while (end < text.size() && is_part(static_cast<unsigned char>(text[end]))) ++end;
    return end - offset;
}

void report(const Source& source, const ReadError& error, k_text_result_t& result) {
    if (error.kind == ReadErrorKind::kOutOfMemory) return result.run_out_of_memory();
    Problem problem;
    problem.which = source.which;
    problem.function = "parse";
    const Foreign foreign = foreign_kind(source.text);
    if (foreign.kind != nullptr) {
        if (foreign.is_text) problem.spot = spot_at(source.text, 0);
        problem.message = foreign.kind;
    } else {
        Buffer words;
        const char* const message = explain(error, source, words);
        problem.spot = error.spot;
        problem.length = length_of_word(source.text, error.spot.offset);
        problem.message = message == nullptr ? nullptr : result.texts.keep(message);
    }
    if (problem.message == nullptr) return result.run_out_of_memory();
    result.fail(K_TEXT_UNREADABLE, problem);
}

}  // namespace

Json read_source(const Source& source, k_text_result_t& result) {
    ReadError error;
    Json root(read(source.text, options_of(source.shape), error));
    if (!root) {
        report(source, error, result);
    } else if (source.shape == Shape::kWhole && !json_is_object(root.get())) {
        result.fail(K_TEXT_UNREADABLE, {.which = source.which,
                                        .pointer = "",
                                        .function = "parse",
                                        .message = "a configuration is an object, this is an array"});
        find_places(source, result);
        root.reset();
    }
    return root;
}

}  // namespace kcnvrt::text
