// layer2.h: the converters of the layer-2 interface types.
#pragma once

#include "frame/json.h"
#include "k_err.h"

namespace kcnvrt {

// One old interface as entry `number` of its type's group. Returns the count of failed fields.
using Layer2ToNew = int (*)(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);

// A whole group as old interfaces, each a member of the old "ifaces" under its "ifname_l2". A group that is absent or
// whose "max_instance" is not an integer of at least 1 is skipped. Returns the count of failed fields.
using Layer2ToOld = int (*)(json_t* group, json_t* old_ifaces, k_err_t* err);

int bridge_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);
int ethernet_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);
int modem_3g_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);
int lte_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);
int atm_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);
int auto_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err);

int bridge_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);
int ethernet_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);
int modem_3g_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);
int lte_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);
int atm_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);
int auto_to_old(json_t* group, json_t* old_ifaces, k_err_t* err);

}  // namespace kcnvrt
