// tunnels.h: the tunnels over a service.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

namespace ways {

int tunnels_to_new(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

// The way back needs a name that a table cannot give. `l3_iface` is the name that each old tunnel carries: that of the
// service itself, or of the interface that owns it.
int tunnels_to_old(json_t* new_service, json_t* old_service, json_t* l3_iface, const Report& report);

inline constexpr Word<ways::tunnels_to_new, nullptr> tunnels_to_new;

}  // namespace kcnvrt
