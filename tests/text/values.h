// values.h: texts and trees as the tests of requests go from one to the other.
#pragma once

#include <jansson.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "owners.h"

inline Tree parsed(std::string_view text) {
    return Tree(json_loadb(text.data(), text.size(), JSON_DECODE_ANY, nullptr));
}

inline std::string printed(const json_t* value) {
    const Text text(json_dumps(value, JSON_COMPACT | JSON_ENCODE_ANY));
    return text == nullptr ? "(none)" : text.get();
}

inline Tree example(const char* name) {
    return Tree(json_load_file((std::string(KCNVRT_EXAMPLES "/") + name).c_str(), 0, nullptr));
}

// The first token of a pointer, with its escapes undone; the rest stays.
inline std::string take_token(std::string_view& pointer) {
    const size_t end = std::min(pointer.find('/', 1), pointer.size());
    std::string token;
    for (size_t at = 1; at < end; ++at) {
        const bool is_escaped = pointer[at] == '~';
        token += is_escaped ? (pointer[++at] == '0' ? '~' : '/') : pointer[at];
    }
    pointer.remove_prefix(end);
    return token;
}

// What a JSON Pointer leads to, borrowed; null where that is nothing. A way of its own, for comparison.
inline json_t* value_at(json_t* root, std::string_view pointer) {
    json_t* value = root;
    while (value != nullptr && !pointer.empty()) {
        const std::string token = take_token(pointer);
        value = json_is_array(value) ? json_array_get(value, std::stoul(token)) : json_object_get(value, token.c_str());
    }
    return value;
}

// Takes the value there away, or puts another one in its place.
inline void change_at(json_t* root, std::string_view pointer, json_t* other) {
    std::string_view last = pointer.substr(pointer.rfind('/'));
    json_t* const holder = value_at(root, pointer.substr(0, pointer.rfind('/')));
    const std::string token = take_token(last);
    if (json_is_array(holder) && other == nullptr) json_array_remove(holder, std::stoul(token));
    if (json_is_array(holder) && other != nullptr) json_array_set(holder, std::stoul(token), other);
    if (json_is_object(holder) && other == nullptr) json_object_del(holder, token.c_str());
    if (json_is_object(holder) && other != nullptr) json_object_set(holder, token.c_str(), other);
}
