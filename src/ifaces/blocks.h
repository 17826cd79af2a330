// blocks.h: the blocks that hang inside interfaces and services of several types.
#pragma once

#include "frame/field.h"
#include "frame/list.h"

namespace kcnvrt {

namespace ways {

// The port list of a layer-2 interface: one compact string against a numbered list of port names.
int ports_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int ports_to_old(json_t* destination, Key key, json_t* value, const Report& report);

// The 802.1X credentials of a service.
int dot1x_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int dot1x_to_old(json_t* destination, Key key, json_t* value, const Report& report);

// The tunnels over a service. The way back needs a name that the table cannot give: tunnels_to_old.
int tunnels_to_new(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

KCNVRT_FIELD_WORD(port_list, ways::ports_to_new, ways::ports_to_old)
KCNVRT_FIELD_WORD(dot1x, ways::dot1x_to_new, ways::dot1x_to_old)

// "tunnels" of a new service as those of an old one. `l3_iface` is the name that each old tunnel carries: that of the
// service itself, or of the interface that owns it.
int tunnels_to_old(json_t* new_service, json_t* old_service, json_t* l3_iface, const Report& report);

}  // namespace kcnvrt
