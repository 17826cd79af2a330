// codes.h: enumerations whose old value is a code, counted from 0, and whose new value is a name.
#pragma once

#include "frame/json.h"
#include "frame/number.h"

namespace kcnvrt {

// The names in the order of their codes. The characters stand in the table itself, so that it needs no relocation.
template <size_t Count>
struct Codes {
    static constexpr int kNone = -1;
    char names[Count][8];

    constexpr std::string_view name_of(size_t code) const { return names[code]; }

    constexpr int code_of(std::string_view name) const {
        for (size_t code = 0; code < Count; ++code)
            if (name == name_of(code)) return static_cast<int>(code);
        return kNone;
    }

    // Each name leads back to its own code.
    constexpr bool are_distinct() const {
        for (size_t code = 0; code < Count; ++code)
            if (code_of(name_of(code)) != static_cast<int>(code)) return false;
        return true;
    }
};

}  // namespace kcnvrt
