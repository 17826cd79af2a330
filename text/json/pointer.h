// pointer.h: following a JSON Pointer (RFC 6901) through a tree, without memory of its own.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <string_view>

#include "basis/buffer.h"

namespace kcnvrt::text {

// Whether a text is one: each of its tokens follows a slash, and "~" is "~0" or "~1".
bool is_json_pointer(std::string_view text);

// The pointer of what has the member, and the member's token: "/a/b~1c" is "/a" and "b~1c". Of "" both are empty.
std::string_view parent_of(std::string_view pointer);
std::string_view last_token_of(std::string_view pointer);

// Token by token, numbers by their value: below 0 where `a` comes first, as a value does before what is inside it.
int compare_pointers(std::string_view a, std::string_view b);

// Whether the one leads to the other's value or into it.
bool is_inside(std::string_view pointer, std::string_view outer);

// Takes the first token off a pointer that is not "".
std::string_view take_token(std::string_view& pointer);

// Appends a member's name as a token, without a slash before it. False when memory ends.
bool append_name(std::string_view name, Buffer& pointer);

// The index that a token is; SIZE_MAX when it is none.
size_t index_of(std::string_view token);

// The member or element of a value that a token names, borrowed; null when there is none.
json_t* child_of(json_t* value, std::string_view token);

// The value that the pointer leads to, borrowed; null when there is none.
json_t* value_at(json_t* root, std::string_view pointer);

// Removes the member that a token names. False when there is none.
bool remove_member(json_t* object, std::string_view token);

// The same of a member or an element.
bool remove_child(json_t* container, std::string_view token);

// Puts a value, borrowed, in the place of a member or an element that is there. False when there is none.
bool replace_child(json_t* container, std::string_view token, json_t* value);

}  // namespace kcnvrt::text
