// k_conf_merge.h: JSON Merge Patch (RFC 7396), an object with the members that change; null means removal.
#pragma once

#include "k_conf_tree.h"

namespace kcnvrt::conf {

// The merge patch from `base` to `candidate`, which is an object; null when memory runs out.
Json merge_between(json_t* base, json_t* candidate);

// `base` with a merge patch applied; null when memory runs out.
Json apply_merge(json_t* base, json_t* patch);

}  // namespace kcnvrt::conf
