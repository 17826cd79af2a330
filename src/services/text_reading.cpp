// Jansson's parser does not always say that memory ran out: inside a longer token it goes on without one of the
// characters, in silence. So what was read is compared with the text: by the lengths of its strings where they tell,
// and else by reading it again.
#include "services/text_reading.h"

#include <algorithm>

#include "k_err.h"

namespace kcnvrt {

namespace {

// The longest token for which the parser needs no more memory than it starts with.
constexpr size_t kAlwaysFits = 14;

Json parsed(const char* text) {
    json_error_t error{};
    Json value{json_loads(text, 0, &error)};
    if (value != nullptr) return value;
    // A failed allocation is left without a reason, too.
    const auto reason = json_error_code(&error);
    if (reason == json_error_out_of_memory || reason == json_error_unknown) k_err_no_memory();
    return value;
}

// How long a text's strings are together. Not known where one has an escape, which may be longer than what it stands
// for, or where something else is so long that it may be a number without one of its digits.
constexpr size_t kUnknown = SIZE_MAX;

size_t length_of_strings(std::string_view text) {
    if (text.find('\\') != std::string_view::npos) return kUnknown;
    size_t length = 0;
    while (true) {
        const size_t start = text.find('"');
        if (std::min(start, text.size()) > kAlwaysFits) return kUnknown;
        if (start == std::string_view::npos) return length;
        text.remove_prefix(start + 1);
        const size_t end = text.find('"');
        if (end == std::string_view::npos) return kUnknown;
        length += end;
        text.remove_prefix(end + 1);
    }
}

size_t length_of_strings(json_t* value) {
    size_t length = json_string_length(value);
    for (const auto [name, member] : members(value)) length += name.length() + length_of_strings(member);
    for (const auto [number, element] : elements(value)) length += length_of_strings(element);
    return length;
}

bool is_whole(json_t* value, const char* text) {
    return length_of_strings(value) == length_of_strings(std::string_view{text});
}

bool are_equal(json_t* one, json_t* other) {
    return one == nullptr || other == nullptr ? one == other : json_equal(one, other) != 0;
}

}  // namespace

Json read_text(json_t* text) {
    if (!json_is_string(text)) return nullptr;
    Json value = parsed(text_of(text));
    if (value != nullptr && is_whole(value.get(), text_of(text))) return value;
    const Json again = parsed(text_of(text));
    if (!are_equal(value.get(), again.get())) k_err_no_memory();
    return value;
}

}  // namespace kcnvrt
