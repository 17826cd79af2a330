// writer.h: from a Jansson tree to a JSON text.
#pragma once

#include <jansson.h>

#include "basis/buffer.h"

namespace kcnvrt::text {

struct Layout {
    bool compact = false;  // no white space at all
    unsigned indent = 4;   // 0 is one line with blanks; at most 31
};

// Appends the text that json_dumps would make, any value at the top, but each real with the fewest digits that read
// back as the same number. False when memory ends or a text is no UTF-8, with the buffer as it was.
bool write(const json_t* value, Layout layout, Buffer& buffer);

}  // namespace kcnvrt::text
