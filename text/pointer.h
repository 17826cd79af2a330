// pointer.h: following a JSON Pointer (RFC 6901) through a tree, without memory of its own.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <string_view>

namespace kcnvrt::text {

// The pointer of what has the member, and the member's token: "/a/b~1c" is "/a" and "b~1c". Of "" both are empty.
std::string_view parent_of(std::string_view pointer);
std::string_view last_token_of(std::string_view pointer);

// Takes the first token off a pointer that is not "".
std::string_view take_token(std::string_view& pointer);

// The index that a token is; SIZE_MAX when it is none.
size_t index_of(std::string_view token);

// The member or element of a value that a token names, borrowed; null when there is none.
json_t* child_of(json_t* value, std::string_view token);

// The value that the pointer leads to, borrowed; null when there is none.
json_t* value_at(json_t* root, std::string_view pointer);

// Removes the member that a token names. False when there is none.
bool remove_member(json_t* object, std::string_view token);

}  // namespace kcnvrt::text
