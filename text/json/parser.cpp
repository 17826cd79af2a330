#include "json/parser.h"

#include <algorithm>
#include <cstring>

#include "json/skip.h"

namespace kcnvrt::text {

namespace {

// Behind the token that starts at `start`.
size_t end_of_token(std::string_view text, size_t start) {
    const bool is_bracket = text[start] == '[' || text[start] == '{';
    const size_t end = is_bracket ? start : skip_value(text, start);
    return end == start ? start + 1 : end;
}

// Jansson lets a NUL byte through behind a number or a literal.
size_t nul_outside_strings(std::string_view text) {
    if (std::memchr(text.data(), '\0', text.size()) == nullptr) return std::string_view::npos;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\0') return at;
        if (text[at] == '"') at = skip_string(text, at) - 1;
    }
    return std::string_view::npos;
}

// Of a token that the parser gave up at `reached`, in the middle or behind it, the byte to point at: a control
// character or a bad escape inside a string, else the token's first.
size_t start_of_problem(std::string_view text, size_t reached) {
    size_t start = skip_blanks(text, 0);
    size_t end = start;
    while (start < text.size() && (end = end_of_token(text, start)) < reached) start = skip_blanks(text, end);
    if (start >= text.size() || text[start] != '"' || reached >= end) return std::min(start, reached);
    if (static_cast<unsigned char>(text[reached]) < 0x20) return reached;
    return std::max(start, text.rfind('\\', reached - 1));
}

bool starts_container(std::string_view text) {
    const size_t start = skip_blanks(text, 0);
    return start < text.size() && (text[start] == '{' || text[start] == '[');
}

bool is_any_value(std::string_view text) {
    json_t* const value = json_loadb(text.data(), text.size(), JSON_DECODE_ANY | JSON_ALLOW_NUL, nullptr);
    json_decref(value);
    return value != nullptr;
}

ReadErrorKind kind_of_syntax(std::string_view text, ReadOptions options) {
    if (skip_blanks(text, 0) == text.size()) return ReadErrorKind::kEmpty;
    const bool is_scalar = !options.any_value && !starts_container(text) && is_any_value(text);
    return is_scalar ? ReadErrorKind::kNotContainer : ReadErrorKind::kSyntax;
}

ReadErrorKind kind_of(const json_error_t& error, std::string_view text, ReadOptions options) {
    switch (json_error_code(&error)) {
        case json_error_unknown:  // A failed allocation sets no error.
        case json_error_out_of_memory:
            return ReadErrorKind::kOutOfMemory;
        case json_error_stack_overflow:
            return ReadErrorKind::kTooDeep;
        case json_error_invalid_utf8:
            return ReadErrorKind::kInvalidUtf8;
        case json_error_end_of_input_expected:
            return ReadErrorKind::kTrailing;
        case json_error_null_character:
        case json_error_null_byte_in_key:
            return ReadErrorKind::kEscapedNul;
        case json_error_duplicate_key:
            return ReadErrorKind::kDuplicate;
        case json_error_numeric_overflow:
            return ReadErrorKind::kNumberTooLarge;
        case json_error_premature_end_of_input: {
            const ReadErrorKind kind = kind_of_syntax(text, options);
            return kind == ReadErrorKind::kSyntax ? ReadErrorKind::kEndOfText : kind;
        }
        default:
            return kind_of_syntax(text, options);
    }
}

size_t place_of(const json_error_t& error, ReadErrorKind kind, std::string_view text) {
    const size_t reached = std::min(static_cast<size_t>(std::max(error.position, 0)), text.size());
    if (kind == ReadErrorKind::kEndOfText) return text.size();
    if (kind == ReadErrorKind::kInvalidUtf8) return reached;
    return start_of_problem(text, reached);
}

}  // namespace

json_t* parse(std::string_view text, ReadOptions options, ReadError& error) {
    const size_t nul = nul_outside_strings(text);
    if (nul != std::string_view::npos) {
        error = {ReadErrorKind::kByteNul, spot_at(text, nul), "NUL byte outside a string"};
        return nullptr;
    }
    size_t flags = JSON_REJECT_DUPLICATES;
    if (options.any_value) flags |= JSON_DECODE_ANY;
    if (options.nul_in_strings) flags |= JSON_ALLOW_NUL;
    json_error_t problem;
    json_t* const value = json_loadb(text.empty() ? "" : text.data(), text.size(), flags, &problem);
    if (value != nullptr) return value;
    error.kind = kind_of(problem, text, options);
    error.spot = spot_at(text, place_of(problem, error.kind, text));
    std::memcpy(error.text, problem.text, sizeof error.text);
    error.text[sizeof error.text - 1] = '\0';  // Jansson keeps the kind there.
    return nullptr;
}

}  // namespace kcnvrt::text
