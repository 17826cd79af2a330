#include "pointer.h"

#include <algorithm>
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

// Whether a token with "~0" for "~" and "~1" for "/" is that name.
bool is_token_of(std::string_view token, std::string_view name) {
    size_t at = 0;
    for (const char byte : name) {
        const bool is_escaped = byte == '~' || byte == '/';
        if (at + (is_escaped ? 1 : 0) >= token.size()) return false;
        if (is_escaped && (token[at++] != '~' || token[at] != (byte == '~' ? '0' : '1'))) return false;
        if (!is_escaped && token[at] != byte) return false;
        ++at;
    }
    return at == token.size();
}

// Names with "~" or "/" are so rare that a search is enough. The iterator of the member, or null.
void* find_escaped(json_t* object, std::string_view token) {
    void* at = json_object_iter(object);
    while (at != nullptr && !is_token_of(token, {json_object_iter_key(at), json_object_iter_key_len(at)}))
        at = json_object_iter_next(object, at);
    return at;
}

bool is_escaped(std::string_view token) {
    return token.find('~') != std::string_view::npos;
}

}  // namespace

std::string_view parent_of(std::string_view pointer) {
    return {pointer.data(), last_slash(pointer)};
}

std::string_view last_token_of(std::string_view pointer) {
    const std::string_view rest = behind(pointer, last_slash(pointer));
    return rest.empty() ? rest : behind(rest, 1);
}

std::string_view take_token(std::string_view& pointer) {
    pointer.remove_prefix(1);
    const std::string_view token{pointer.data(), std::min(pointer.find('/'), pointer.size())};
    pointer.remove_prefix(token.size());
    return token;
}

size_t index_of(std::string_view token) {
    size_t index = 0;
    const char* const end = token.data() + token.size();
    const auto [stopped, error] = std::from_chars(token.data(), end, index);
    const bool is_index = error == std::errc{} && stopped == end && (token.size() == 1 || token[0] != '0');
    return is_index ? index : SIZE_MAX;
}

json_t* child_of(json_t* value, std::string_view token) {
    if (json_is_array(value)) return json_array_get(value, index_of(token));
    if (is_escaped(token)) return json_object_iter_value(find_escaped(value, token));
    return json_object_getn(value, token.data(), token.size());
}

json_t* value_at(json_t* root, std::string_view pointer) {
    json_t* value = root;
    while (value != nullptr && !pointer.empty()) value = child_of(value, take_token(pointer));
    return value;
}

bool remove_member(json_t* object, std::string_view token) {
    if (!is_escaped(token)) return json_object_deln(object, token.data(), token.size()) == 0;
    void* const found = find_escaped(object, token);
    return found != nullptr &&
           json_object_deln(object, json_object_iter_key(found), json_object_iter_key_len(found)) == 0;
}

}  // namespace kcnvrt::text
