// pointer.h: JSON Pointers (RFC 6901), read by another implementation than the library's.
#pragma once

#include <jansson.h>

#include <string_view>

// What a pointer leads to; null when it leads nowhere or is none.
const json_t* at_pointer(const json_t* tree, std::string_view pointer);
