// excerpt.h: the line of a text in which something is, as a person is shown it.
#pragma once

#include "basis/buffer.h"
#include "secrets.h"

namespace kcnvrt::text {

// What is to be shown of a text.
struct View {
    std::string_view text;
    const GrowingArray<Span>* secrets;  // masked; null where nothing is
};

// Where the value stands in the line that is shown, in bytes.
struct Mark {
    size_t offset;
    size_t length;
};

// Appends the line in which `value` starts, without what it is indented by, in at most `width` characters: where it is
// longer, what is around the value. Characters that would move a cursor are replaced. False when memory ends.
bool show_line(const View& view, Span value, size_t width, Buffer& line, Mark& mark);

}  // namespace kcnvrt::text
