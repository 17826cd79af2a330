// port_list.h: the ports of a layer-2 interface: one compact string in the old layout, a numbered list of names in the
// new one.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

namespace ways {

int ports_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int ports_to_old(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::ports_to_new, ways::ports_to_old> port_list;

}  // namespace kcnvrt
