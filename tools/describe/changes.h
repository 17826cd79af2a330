// changes.h: where two documents differ.
#pragma once

#include <set>

#include "names.h"

namespace describe {

// The outermost places that are not the same in both. Null is an absent document.
std::set<Names> changes(json_t* one, json_t* other);

}  // namespace describe
