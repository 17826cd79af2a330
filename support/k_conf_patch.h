// k_conf_patch.h: JSON Patch (RFC 6902), an array of operations that are applied one after another.
#pragma once

#include "k_conf_problem.h"
#include "k_conf_tree.h"

namespace kcnvrt::conf {

// The patch from `base` to `candidate`; null when memory runs out.
Json patch_between(json_t* base, json_t* candidate);

// The operation that does not fit, and why.
struct Misfit {
    size_t number;  // counted from 1
    const char* path;
    Problem problem;
};

// `base` with the patch applied; or null, and the misfit where memory was not the reason. `cost` is what the patch
// costs to walk (measure).
Json apply_patch(json_t* base, json_t* patch, uint64_t cost, Misfit* misfit);

}  // namespace kcnvrt::conf
