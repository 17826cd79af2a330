// changed_copy.h: a tree with some values changed, beside the tree as it is.
#pragma once

#include <string_view>

#include "growing_array.h"
#include "owned.h"

namespace kcnvrt::text {

// One change of a tree.
struct Change {
    std::string_view pointer;  // of a value that is there; not ""
    json_t* value;             // stands there instead, borrowed; null: the member or element is taken away
};

// A copy that shares with `root` all that is not around a change. The changes are put in order, and none is inside
// another. Null when memory ends.
Json changed_copy(json_t* root, GrowingArray<Change>& changes);

// A copy that shares nothing. Null when memory ends.
Json deep_copy(json_t* value);

}  // namespace kcnvrt::text
