// bridge_split.h: one old service of a bridge carries both address families; the new layout has an entry for each, in
// the groups "ip" and "ipv6" under the same number.
#pragma once

#include "frame/json.h"
#include "frame/report.h"

namespace kcnvrt {

// Fills both entries. Returns the count of failed fields.
int split_service(json_t* old_service, json_t* ip_entry, json_t* ipv6_entry, const Report& report);

// Fills the old service again. The entry of the other family may be absent, and then so are its fields; where both
// have the same field, the IPv6 entry wins. Returns the count of failed fields.
int rejoin_service(json_t* ip_entry, json_t* ipv6_entry, json_t* old_service, const Report& report);

}  // namespace kcnvrt
