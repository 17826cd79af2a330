#include "json/pointer.h"

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

bool is_number(std::string_view token) {
    return !token.empty() && std::all_of(token.begin(), token.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Numbers come first, by their value, so that the elements of an array stand in their order.
int compare_tokens(std::string_view a, std::string_view b) {
    const bool is_number_a = is_number(a);
    if (is_number_a != is_number(b)) return is_number_a ? -1 : 1;
    if (is_number_a && a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

}  // namespace

bool is_json_pointer(std::string_view text) {
    if (!text.empty() && text[0] != '/') return false;
    for (size_t at; (at = text.find('~')) != std::string_view::npos; text.remove_prefix(at + 1))
        if (at + 1 == text.size() || (text[at + 1] != '0' && text[at + 1] != '1')) return false;
    return true;
}

int compare_pointers(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty())
        if (const int order = compare_tokens(take_token(a), take_token(b)); order != 0) return order;
    return a.empty() ? (b.empty() ? 0 : -1) : 1;
}

bool is_inside(std::string_view pointer, std::string_view outer) {
    return pointer.starts_with(outer) && (pointer.size() == outer.size() || pointer[outer.size()] == '/');
}

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

bool append_name(std::string_view name, Buffer& pointer) {
    for (size_t special; (special = name.find_first_of("~/")) != std::string_view::npos;) {
        const bool is_tilde = name[special] == '~';
        if (!pointer.append({name.data(), special}) || !pointer.append(is_tilde ? "~0" : "~1")) return false;
        name.remove_prefix(special + 1);
    }
    return pointer.append(name);
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

bool remove_child(json_t* container, std::string_view token) {
    if (json_is_array(container)) return json_array_remove(container, index_of(token)) == 0;
    return remove_member(container, token);
}

bool replace_child(json_t* container, std::string_view token, json_t* value) {
    if (json_is_array(container)) return json_array_set(container, index_of(token), value) == 0;
    if (!is_escaped(token)) return json_object_setn_nocheck(container, token.data(), token.size(), value) == 0;
    void* const found = find_escaped(container, token);
    return found != nullptr && json_object_iter_set(container, found, value) == 0;
}

}  // namespace kcnvrt::text
