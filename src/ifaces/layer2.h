// layer2.h: the converters of the layer-2 interface types.
#pragma once

#include "frame/json.h"
#include "k_err.h"

namespace kcnvrt {

// One interface from one layout into the other. The list of interfaces writes its name and its type. Returns the count
// of failed fields.
using Layer2ToNew = int (*)(json_t* old_iface, json_t* entry, k_err_t* err);
using Layer2ToOld = int (*)(json_t* entry, json_t* old_iface, k_err_t* err);

int bridge_to_new(json_t* old_iface, json_t* entry, k_err_t* err);
int ethernet_to_new(json_t* old_iface, json_t* entry, k_err_t* err);
int modem_3g_to_new(json_t* old_iface, json_t* entry, k_err_t* err);
int lte_to_new(json_t* old_iface, json_t* entry, k_err_t* err);
int atm_to_new(json_t* old_iface, json_t* entry, k_err_t* err);
int auto_to_new(json_t* old_iface, json_t* entry, k_err_t* err);

int bridge_to_old(json_t* entry, json_t* old_iface, k_err_t* err);
int ethernet_to_old(json_t* entry, json_t* old_iface, k_err_t* err);
int modem_3g_to_old(json_t* entry, json_t* old_iface, k_err_t* err);
int lte_to_old(json_t* entry, json_t* old_iface, k_err_t* err);
int atm_to_old(json_t* entry, json_t* old_iface, k_err_t* err);
int auto_to_old(json_t* entry, json_t* old_iface, k_err_t* err);

}  // namespace kcnvrt
