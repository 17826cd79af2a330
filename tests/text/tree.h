// tree.h: trees as the tests compare them.
#pragma once

#include <string>
#include <string_view>

#include "owned.h"

namespace kcnvrt::text {

// What Jansson's printer makes of it, in full; "refused" where it cannot.
inline std::string dumped(const json_t* value, size_t flags) {
    const Allocated<char> text{json_dumps(value, flags | JSON_ENCODE_ANY)};
    return text == nullptr ? "refused" : text.get();
}

// The same text, long enough to be read into as little memory as there may be.
inline std::string as_large(std::string_view text) {
    return std::string{text} + std::string(size_t{128} * 1024, ' ');
}

}  // namespace kcnvrt::text
