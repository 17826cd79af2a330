// variants.h: what values could say instead, to see whether anything depends on what they say.
#pragma once

#include "trials/counter_check.h"
#include "trials/leaves.h"

namespace kcnvrt::text {

// How many variants are tried of a value.
inline constexpr size_t kVariants = 12;

// Changes every leaf to its variant of that number, where it has one; the leaves outlive the changes, and the variants
// live as long as `made`, an array. False when memory ends.
bool change_leaves(json_t* root, const Leaves& leaves, size_t first, size_t last, size_t variant, json_t* made,
                   GrowingArray<Change>& changes);

}  // namespace kcnvrt::text
