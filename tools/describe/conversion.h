// conversion.h: a whole document converted, and what was said.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "side.h"
#include "tree.h"

namespace describe {

struct Message {
    std::string pointer;  // into the source
    std::string text;
};

struct Answer {
    Tree result;  // null when the document was rejected
    std::vector<Message> messages;

    bool is_silent() const { return result != nullptr && messages.empty(); }
};

// From the layout `from` to the other one.
Answer convert(Side from, json_t* document, uint8_t flags);

inline Side other(Side side) {
    return side == Side::kOld ? Side::kNew : Side::kOld;
}
inline const char* name_of(Side side) {
    return side == Side::kOld ? "old" : "new";
}

}  // namespace describe
