// dot1x.h: the 802.1X settings of a service.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

namespace ways {

int dot1x_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int dot1x_to_old(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::dot1x_to_new, ways::dot1x_to_old> dot1x;

}  // namespace kcnvrt
