// tr069_misc.h: "misc", where the TR-069 client keeps the objects that it has shown to its server.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

namespace ways {

int misc_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int misc_to_old(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::misc_to_new, ways::misc_to_old> misc;

}  // namespace kcnvrt
