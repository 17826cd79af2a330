#include "unreadable.h"

#include <algorithm>
#include <iterator>

namespace kcnvrt::text {

namespace {

using namespace std::string_view_literals;

struct Beginning {
    std::string_view bytes;
    const char* meaning;
};

// clang-format off
constexpr Beginning kMarks[] = {
    {"\xEF\xBB\xBF"sv,             "the text begins with a byte-order mark: save it as UTF-8 without one"},
};

constexpr Beginning kBinaries[] = {
    {"\xFF\xFE"sv,                 "this is UTF-16: save it as UTF-8"},
    {"\xFE\xFF"sv,                 "this is UTF-16: save it as UTF-8"},
    {"{\0"sv,                      "this is UTF-16: save it as UTF-8"},
    {"\0{"sv,                      "this is UTF-16: save it as UTF-8"},
    {"\x1F\x8B"sv,                 "this is compressed (gzip): unpack it first"},
    {"PK\x03\x04"sv,               "this is a ZIP archive: unpack it first"},
    {"\xFD" "7zXZ\0"sv,            "this is compressed (xz): unpack it first"},
    {"7z\xBC\xAF\x27\x1C"sv,       "this is a 7z archive: unpack it first"},
    {"BZh"sv,                      "this is compressed (bzip2): unpack it first"},
    {"\x28\xB5\x2F\xFD"sv,         "this is compressed (zstd): unpack it first"},
    {"\x04\x22\x4D\x18"sv,         "this is compressed (lz4): unpack it first"},
    {"%PDF-"sv,                    "this is a PDF document, not JSON"},
    {"\x7F" "ELF"sv,               "this is a program, not JSON"},
};

// Behind white space, in lower case.
constexpr Beginning kMarkups[] = {
    {"<!doctype html"sv, "this is an HTML page, not JSON: it may be the page on which one has to log in"},
    {"<html"sv,          "this is an HTML page, not JSON: it may be the page on which one has to log in"},
    {"<"sv,              "this is XML or HTML, not JSON"},
};

// What the parser says, up to the text that it found.
constexpr Beginning kSyntaxErrors[] = {
    {"string or '}' expected"sv, "the name of a member, in double quotes, or } is expected here"},
    {"':' expected"sv,           "a colon is expected here, between a member's name and its value"},
    {"'}' expected"sv,           "a comma or } is expected here"},
    {"']' expected"sv,           "a comma or ] is expected here"},
    {"invalid token"sv,          "a value is expected here"},
    {"unexpected token"sv,       "a value is expected here"},
    {"unexpected newline"sv,     "a line ends inside a text: its closing quote is missing"},
    {"control character"sv,      "a control character inside a text: it is written as \\u and four hexadecimal digits"},
    {"'[' or '{' expected"sv,    "this is no JSON: an object in { } or an array in [ ] is expected"},
    {"invalid escape"sv,         "a backslash inside a text is followed by \" \\ / b f n r t or uXXXX"},
    {"invalid Unicode escape"sv, "\\u is followed by four hexadecimal digits"},
    {"invalid Unicode '"sv,      "this \\u is half of a pair whose other half is missing"},
    {"too big integer"sv,        "this number is too large"},
    {"too big negative"sv,       "this number is too large"},
    {"real number overflow"sv,   "this number is too large"},
};
// clang-format on

constexpr std::string_view kBlanks = " \t\n\r";

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// `start` is in small letters.
bool starts_with_in_any_case(std::string_view text, std::string_view start) {
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(), [](char a, char b) { return a == lower(b); });
}

bool starts_with(std::string_view text, std::string_view start) {
    return text.starts_with(start);
}

template <size_t size>
const char* meaning_of(std::string_view text, const Beginning (&beginnings)[size],
                       bool (*starts)(std::string_view, std::string_view) = starts_with) {
    const auto found = std::find_if(std::begin(beginnings), std::end(beginnings),
                                    [&](const Beginning& beginning) { return starts(text, beginning.bytes); });
    return found == std::end(beginnings) ? nullptr : found->meaning;
}

std::string_view from(std::string_view text, size_t offset) {
    return {text.data() + offset, text.size() - offset};
}

std::string_view behind_blanks(std::string_view text) {
    return from(text, std::min(text.find_first_not_of(kBlanks), text.size()));
}

char last_before(std::string_view text, size_t offset) {
    const size_t last = std::string_view(text.data(), offset).find_last_not_of(kBlanks);
    return last == std::string_view::npos ? '\0' : text[last];
}

bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool is_letter(char byte) {
    return lower(byte) >= 'a' && lower(byte) <= 'z';
}

// A text that begins with a # is rather no JSON at all.
bool is_comment(std::string_view text, size_t offset) {
    const std::string_view rest = from(text, offset);
    return rest.starts_with("//") || rest.starts_with("/*") ||
           (rest.starts_with('#') && last_before(text, offset) != '\0');
}

bool starts_badly_written_word(std::string_view text) {
    for (const std::string_view word : {"true"sv, "false"sv, "null"sv})
        if (starts_with_in_any_case(text, word) && !text.starts_with(word)) return true;
    return false;
}

const char* explain_number(std::string_view text) {
    const std::string_view digits = text[0] == '-' ? from(text, 1) : text;
    if (digits.size() > 1 && digits[0] == '0' && is_digit(digits[1])) return "a number does not begin with 0";
    return text[0] == '+' ? "a number does not begin with +" : "this is no number";
}

// A word where a value is expected; people write what other languages have.
const char* explain_word(std::string_view text) {
    if (text.empty()) return nullptr;
    if (text[0] == '\'') return "a text stands in double quotes, not in single ones";
    if (starts_badly_written_word(text)) return "true, false and null are written in small letters";
    if (is_letter(text[0])) return "a text stands in double quotes; only numbers, true, false and null go without";
    const bool is_number = is_digit(text[0]) || text[0] == '-' || text[0] == '+' || text[0] == '.';
    return is_number ? explain_number(text) : nullptr;
}

const char* explain_syntax(const ReadError& error, std::string_view text) {
    const std::string_view said = error.text;
    const std::string_view rest = from(text, error.spot.offset);
    if (is_comment(text, error.spot.offset)) return "JSON has no comments";
    const bool is_closing = rest.starts_with('}') || rest.starts_with(']');
    if (is_closing && last_before(text, error.spot.offset) == ',')
        return rest[0] == '}' ? "the comma before this } is one too many" : "the comma before this ] is one too many";
    const char* const word = said.starts_with("invalid token") ? explain_word(rest) : nullptr;
    if (word != nullptr) return word;
    if (rest.starts_with('\'')) return "a name stands in double quotes, not in single ones";
    const char* const words = meaning_of(said, kSyntaxErrors);
    return words != nullptr ? words : "this is no JSON";
}

// `"name" is given twice`: the parser points at the second one.
const char* explain_duplicate(const ReadError& error, std::string_view text, Buffer& words) {
    constexpr size_t kMostShown = 64;
    const std::string_view rest = from(text, error.spot.offset);
    const size_t end = rest.find('"', 1);
    if (end == std::string_view::npos || end > kMostShown) return "this member is given twice in the same object";
    const bool is_written = words.append({rest.data(), end + 1}) &&
                            words.append(" is given twice in the same object"sv) && words.terminate();
    return is_written ? words.data() : nullptr;
}

const char* explain_scalar(Shape shape) {
    return shape == Shape::kWhole ? "a configuration is an object in { }, this is a single value"
                                  : "a section is an object in { } or an array in [ ], this is a single value";
}

}  // namespace

Foreign foreign_kind(std::string_view text) {
    if (const char* kind = meaning_of(text, kBinaries)) return {kind, false};
    if (const char* kind = meaning_of(text, kMarks)) return {kind, true};
    return {meaning_of(behind_blanks(text), kMarkups, starts_with_in_any_case), true};
}

const char* explain(const ReadError& error, const Source& source, Buffer& words) {
    switch (error.kind) {
        case ReadErrorKind::kEmpty:
            return source.text.empty() ? "there is nothing: the text is empty" : "there is nothing but white space";
        case ReadErrorKind::kEndOfText:
            return "the text ends in the middle: the rest of it is missing";
        case ReadErrorKind::kTrailing:
            return "the JSON text ends before this, and something follows";
        case ReadErrorKind::kNotContainer:
            return explain_scalar(source.shape);
        case ReadErrorKind::kByteNul:
            return "a NUL byte: the file is damaged, or it is no text";
        case ReadErrorKind::kEscapedNul:
            return "a text with the character \\u0000 cannot be converted";
        case ReadErrorKind::kInvalidUtf8:
            return "this is no UTF-8: the text is damaged, or in another encoding";
        case ReadErrorKind::kDuplicate:
            return explain_duplicate(error, source.text, words);
        case ReadErrorKind::kNumberTooLarge:
            return "this number is too large";
        case ReadErrorKind::kTooDeep:
            return "arrays and objects are nested more than 2048 levels deep";
        default:
            return explain_syntax(error, source.text);
    }
}

}  // namespace kcnvrt::text
