// position.h: where things stand in a JSON text.
#pragma once

#include <cstddef>
#include <string_view>

namespace kcnvrt::text {

// Line and column are counted from 1, in code points; a line ends at a line feed, a tab is one column. Bytes that are
// no UTF-8 count as whatever they start like.
struct Spot {
    size_t offset = 0;  // in bytes, from 0
    size_t line = 0;    // 0: nowhere
    size_t column = 0;
};

// An offset beyond the end is the end.
Spot spot_at(std::string_view text, size_t offset);

// A value that is looked for.
struct Sought {
    std::string_view pointer;  // a JSON Pointer; "" is the whole
    Spot spot;                 // of the value's first byte; line 0 where there is no such value
    size_t length = 0;         // of the value, in bytes
};

// Finds values by their pointers, in one walk over the text and in time proportional to both, in any order. Meant for a
// text that can be read: in any other, some may not be found. False when memory ends; nothing is found then.
bool find_values(std::string_view text, Sought* sought, size_t count);

}  // namespace kcnvrt::text
