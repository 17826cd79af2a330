// pointer.h: following a JSON Pointer (RFC 6901) through a tree.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <string_view>

#include "buffer.h"

namespace kcnvrt::text {

// The pointer of what has the member, and the member's token: "/a/b~1c" is "/a" and "b~1c". Of "" both are empty.
std::string_view parent_of(std::string_view pointer);
std::string_view last_token_of(std::string_view pointer);

// The member or element of a value that a token names; null when there is none, and when memory ends.
json_t* child_of(json_t* value, std::string_view token, Buffer& name);

// The value that the pointer leads to, borrowed; null when there is none, and when memory ends.
json_t* value_at(json_t* root, std::string_view pointer);

// The index that a token is; SIZE_MAX when it is none.
size_t index_of(std::string_view token);

// A token as a name, ended by a NUL; its length. False when memory ends.
bool unescape(std::string_view token, Buffer& name);

}  // namespace kcnvrt::text
