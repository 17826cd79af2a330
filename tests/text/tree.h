// tree.h: trees as the tests compare them.
#pragma once

#include <string>

#include "owned.h"

namespace kcnvrt::text {

// What Jansson's printer makes of it, in full; "refused" where it cannot.
inline std::string dumped(const json_t* value, size_t flags) {
    const Allocated<char> text{json_dumps(value, flags | JSON_ENCODE_ANY)};
    return text == nullptr ? "refused" : text.get();
}

}  // namespace kcnvrt::text
