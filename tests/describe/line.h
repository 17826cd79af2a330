// line.h: a document and what its conversion said of it, as a line of JSON for the schemas' law.
//     "layout"    "old" or "new"
//     "document"  the document
//     "messages"  of its conversion, each [pointer, text]
//     "lost"      pointers to what did not come back from the other layout; null where something was said on the way
//     "at"        the pointer to what was put there; left out where nothing was
//     "broken"    whether that stands in the place of a container and is none of its type
#pragma once

#include "conversion.h"
#include "names.h"

namespace describe {

struct Document {
    Side side;
    Tree root;
    uint8_t flags = 0;
    Names damaged = {};  // empty where it is not
    bool is_broken = false;
    bool is_kept = false;  // it is known to come back, but for losses that are declared
};

void print_line(const Document& document);

}  // namespace describe
