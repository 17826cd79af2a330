#include "record.h"

#include <algorithm>
#include <new>

#include "json/reader.h"
#include "json/skip.h"
#include "json/writer.h"
#include "owned.h"
#include "print/printable.h"

namespace kcnvrt {

namespace {

Json read_value(std::string_view value) {
    text::ReadError error;
    Json json(text::read(value, {.any_value = true, .nul_in_strings = true}, error));
    if (!json && error.kind == text::ReadErrorKind::kOutOfMemory) throw std::bad_alloc();
    return json;
}

// '{' and '[' differ in one bit.
bool opens(char byte) {
    return (byte | 0x20) == '{';
}

// Of pieces of a fixed length compilers make vectors, which take next to no time.
std::size_t count_opening(std::string_view text) {
    constexpr std::size_t kPiece = 128;
    std::size_t count = 0;
    for (; text.size() >= kPiece; text.remove_prefix(kPiece)) {
        unsigned char in_piece = 0;
        for (std::size_t i = 0; i < kPiece; ++i) in_piece = static_cast<unsigned char>(in_piece + opens(text[i]));
        count += in_piece;
    }
    return count + static_cast<std::size_t>(std::ranges::count_if(text, opens));
}

// Objects and arrays inside one another.
int deepest_level(std::string_view record) {
    int deepest = 0;
    int level = 0;
    for (std::size_t at = 0; at < record.size(); ++at) {
        if (record[at] == '"')
            at = text::skip_string(record, at) - 1;
        else if (opens(record[at]))
            deepest = std::max(deepest, ++level);
        else if (record[at] == '}' || record[at] == ']')
            --level;
    }
    return deepest;
}

// As JSON writes one, however large.
bool is_number(std::string_view text) {
    const auto take = [&text](char byte) {
        const bool is_there = text.starts_with(byte);
        text.remove_prefix(is_there ? 1 : 0);
        return is_there;
    };
    const auto take_digits = [&text] {
        const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count != 0;
    };
    take('-');
    if (!take('0') && !take_digits()) return false;
    if (take('.') && !take_digits()) return false;
    if (take('e') || take('E')) {
        if (!take('+')) take('-');
        if (!take_digits()) return false;
    }
    return text.empty();
}

std::string_view text_of(const Json& string) {
    return {json_string_value(string.get()), json_string_length(string.get())};
}

}  // namespace

text::Sought find_value(std::string_view record, std::string_view pointer) {
    text::Sought sought;
    sought.pointer = pointer;
    if (!text::find_values(record, &sought, 1)) throw std::bad_alloc();
    return sought;
}

std::string_view value_at(std::string_view record, const text::Sought& place) {
    return place.spot.line == 0 ? std::string_view() : record.substr(place.spot.offset, place.length);
}

bool may_be_too_deep(std::string_view record) {
    return count_opening(record) >= text::kMostLevels && deepest_level(record) >= text::kMostLevels;
}

std::string id_of(std::string_view record, const std::optional<std::string>& pointer) {
    const std::string_view value = pointer ? value_at(record, find_value(record, *pointer)) : std::string_view();
    if (is_number(value)) return std::string(value);
    const bool is_scalar = !value.empty() && value.front() != '{' && value.front() != '[';
    const Json json = is_scalar ? read_value(value) : nullptr;
    if (!json) return "null";
    if (!json_is_string(json.get())) return std::string(value);
    std::string id;
    append_json_string(id, text_of(json));
    return id;
}

std::optional<std::string> text_in(std::string_view value) {
    const Json json = value.starts_with('"') ? read_value(value) : nullptr;
    if (!json) return std::nullopt;
    return std::string(text_of(json));
}

std::string json_string_of(std::string_view text) {
    const Json string(json_stringn_nocheck(text.data(), text.size()));
    text::Buffer json;
    if (!string || !text::write(string.get(), {.compact = true}, json)) throw std::bad_alloc();
    return std::string(json.view());
}

}  // namespace kcnvrt
