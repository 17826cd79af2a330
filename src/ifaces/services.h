// services.h: the converters of the service types that Ethernet and ATM interfaces carry.
#pragma once

#include "frame/json.h"
#include "k_err.h"

namespace kcnvrt {

// One old service as an entry of its type's group; the entry carries the service's name already. Returns the count of
// failed fields.
using ServiceToNew = int (*)(json_t* old_service, json_t* entry, k_err_t* err);

// One entry as an old service, which says its type already. `l2_iface` is the name of the interface that owns the
// service. Returns the count of failed fields.
using ServiceToOld = int (*)(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);

int bridge_service_to_new(json_t* old_service, json_t* entry, k_err_t* err);
int ip_service_to_new(json_t* old_service, json_t* entry, k_err_t* err);
int ipv6_service_to_new(json_t* old_service, json_t* entry, k_err_t* err);
int ppp_service_to_new(json_t* old_service, json_t* entry, k_err_t* err);
int pppv6_service_to_new(json_t* old_service, json_t* entry, k_err_t* err);  // of "pppdual" services as well

int bridge_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);
int ip_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);
int ipv6_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);
int ppp_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);
int pppv6_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);
int pppdual_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err);

}  // namespace kcnvrt
