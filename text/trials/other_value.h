// other_value.h: something else that a value could say as well.
#pragma once

#include "owned.h"

namespace kcnvrt::text {

// Of switches, numbers and their texts.
bool has_other_value(const json_t* value);

// A switch turned, another number. Null when memory ends.
Json other_value(const json_t* value);

}  // namespace kcnvrt::text
