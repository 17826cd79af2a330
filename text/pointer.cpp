#include "pointer.h"

#include <charconv>
#include <cstdint>

namespace kcnvrt::text {

namespace {

size_t last_slash(std::string_view pointer) {
    const size_t slash = pointer.rfind('/');
    return slash == std::string_view::npos ? pointer.size() : slash;
}

std::string_view behind(std::string_view text, size_t offset) {
    return {text.data() + offset, text.size() - offset};
}

}  // namespace

std::string_view parent_of(std::string_view pointer) {
    return {pointer.data(), last_slash(pointer)};
}

std::string_view last_token_of(std::string_view pointer) {
    const std::string_view rest = behind(pointer, last_slash(pointer));
    return rest.empty() ? rest : behind(rest, 1);
}

size_t index_of(std::string_view token) {
    size_t index = 0;
    const char* const end = token.data() + token.size();
    const auto [stopped, error] = std::from_chars(token.data(), end, index);
    const bool is_index = error == std::errc{} && stopped == end && (token.size() == 1 || token[0] != '0');
    return is_index ? index : SIZE_MAX;
}

bool unescape(std::string_view token, Buffer& name) {
    name.cut(0);
    char* const place = name.room(token.size() + 1);
    if (place == nullptr) return false;
    char* end = place;
    for (size_t i = 0; i < token.size(); ++i) {
        const bool is_escape = token[i] == '~' && i + 1 < token.size();
        *end++ = is_escape ? (token[++i] == '1' ? '/' : '~') : token[i];
    }
    *end = '\0';
    name.advance_to(end);
    return true;
}

json_t* child_of(json_t* value, std::string_view token, Buffer& name) {
    if (json_is_array(value)) return json_array_get(value, index_of(token));
    return unescape(token, name) ? json_object_getn(value, name.data(), name.size()) : nullptr;
}

json_t* value_at(json_t* root, std::string_view pointer) {
    Buffer name;
    json_t* value = root;
    while (value != nullptr && !pointer.empty()) {
        pointer.remove_prefix(1);
        const size_t length = pointer.find('/') == std::string_view::npos ? pointer.size() : pointer.find('/');
        value = child_of(value, {pointer.data(), length}, name);
        pointer.remove_prefix(length);
    }
    return value;
}

}  // namespace kcnvrt::text
