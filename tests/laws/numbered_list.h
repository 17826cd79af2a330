// numbered_list.h: what a numbered list looks like.
#pragma once

#include <jansson.h>

#include <algorithm>
#include <cctype>
#include <string>

inline bool is_number(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

inline bool is_numbered_list(json_t* value) {
    return json_is_object(json_object_get(value, "1")) || json_object_get(value, "max_instance") != nullptr;
}
