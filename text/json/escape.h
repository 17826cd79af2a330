// escape.h: what stands behind a backslash in a JSON string.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kcnvrt::text {

struct Escape {
    uint32_t code;  // the character
    size_t length;  // of the whole escape; 0 where it is none that JSON knows, or half of a surrogate pair
};

// The escape whose backslash is at `at`, all of it before `end`.
Escape read_escape(const char* at, const char* end);

}  // namespace kcnvrt::text
