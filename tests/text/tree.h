// tree.h: trees as the tests compare them.
#pragma once

#include <memory>
#include <string>

#include "json.h"

namespace kcnvrt::text {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

// What Jansson's printer makes of it, in full; "refused" where it cannot.
inline std::string dumped(const json_t* value, size_t flags) {
    const std::unique_ptr<char, FreeText> text{json_dumps(value, flags | JSON_ENCODE_ANY)};
    return text == nullptr ? "refused" : text.get();
}

}  // namespace kcnvrt::text
