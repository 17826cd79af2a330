/*
 * device.h: the small sections of a device. Part of k_cnvrt.h, whose conventions hold; every function is a section
 * handler (k_cnvrt_handler_t) unless it says otherwise. The members are in docs/mapping, on the pages of the old names.
 */
#ifndef K_CNVRT_DEVICE_H
#define K_CNVRT_DEVICE_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * Device information: mode, provisioning code, model, auto-login, language. Towards new, `source` is the old root and
 * `destination` "Device", which gets "DeviceInfo" when there is something to say; towards old, `source` is "DeviceInfo"
 * and `destination` the old root, whose "tr069" gets a "DeviceInfo" in every case. Always 0, no messages.
 *
 * The two directions differ on purpose: the model name goes only towards old, and the auto-login setting is read from
 * "users"."services"."web" but written into "tr069"."DeviceInfo". Where the old root has no "tr069"."DeviceInfo",
 * neither it nor the provisioning code is read.
 */
int k_cnvrt_get_deviceinfo_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_deviceinfo_from_new(json_t *source, json_t *destination, k_err_t *err);

/* The operator's customization block, carried as a whole. Towards new, `source` is the old root and `destination`
 * "Customization"; towards old, `destination` is the old root. Always 0, no messages. */
int k_cnvrt_get_customs_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_customs_from_new(json_t *source, json_t *destination, k_err_t *err);

/* The default SSIDs of both bands. The result is wrapped: `destination` gets one member "Default_ssid" (towards new) or
 * "default_ssid" (towards old), {} when the source is null or has neither band. Always 0, no messages.
 * Callers link against this spelling of the names. */
int k_cnvtr_get_default_ssid_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvtr_get_default_ssid_from_new(json_t *source, json_t *destination, k_err_t *err);

/* The VLAN identifiers of the WAN ports: an object keyed by interface name against a numbered list of {"name", "pvid"},
 * numbered in ascending byte order of the names. Towards old, entries without a string "name" or without "pvid" are
 * left out. Always 0, no messages. */
int k_cnvrt_get_wan_pvid_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_wan_pvid_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * The routing section, routes and RIP together. Towards new, `source` is the old root and `destination` "Routing",
 * which gets what there is of the two; towards old, `destination` is the old root and gets "route" ([] for a null
 * source) and "rip" (where the source has "RIP").
 * The result is that of RIP alone: a bad route is reported and left out, and never rejects a configuration.
 */
int k_cnvrt_get_routing_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_routing_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * Static routes: an array of routes of both families against the numbered lists "ipv4"."Routes" and "ipv6"."Routes" of
 * the routing section, numbered together by array position, so that each list has gaps where the other family's routes
 * stand and its "max_instance" is its highest number. Of interfaces only old "auto" and new "all" are kept.
 *
 * Towards new, `destination` is the routing section, which gets both lists, also for a null source. An IPv4 route
 * without a good "netmask" gets no "DestIPPrefix". A route whose "ip" is neither an IPv4 address nor an IPv6 prefix (a
 * length of 128 is added where there is none) is left out.
 *
 * Towards old, `source` is the routing section and `destination` an array that gets one element per number, {} for a
 * missing one; both lists are bounded, together. An IPv6 route whose number an IPv4 route also has is not converted,
 * and without an IPv4 list nothing is. A prefix length that is no IPv4 one gives the "netmask" "".
 * Messages towards new:
 *     Invalid field ip!\n
 *     Error json_pack!\n, strdup error:\n, realloc error:\n (memory ran out; each counts 1)
 */
int k_cnvrt_get_route_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_route_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * RIP: an object keyed by interface against a numbered list in ascending byte order of the interface names. "version"
 * is a decimal text in the old layout and an integer in the new (json_integer_set_safe, json_integer_old_set_safe).
 * Towards new, an entry that is not an object leaves its number out. Towards old, an entry without a string "ifname_l3"
 * is left out, though its problem is reported and counted.
 * Messages towards new:
 *     Error allocated memory!\n (memory ran out; counts 1)
 */
int k_cnvrt_get_rip_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_rip_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * Remote access rules: an array, or an object that is a single rule, against a numbered list. "dport" and "sport" are
 * decimal texts in the old layout and integers in the new (json_integer_set_safe, json_integer_old_set_safe). Towards
 * new, messages come under "k_cnvrt_get_remote_from_old_element", and a single rule of which nothing is left writes
 * nothing. Towards old, `destination` is an array that gets {} for a missing number; the list is bounded.
 */
int k_cnvrt_get_remote_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_remote_from_new(json_t *source, json_t *destination, k_err_t *err);

/* One old remote access rule as a new one, an object that the caller owns ({} for a null rule). Adds its failed fields
 * to `errors`, which may be null. */
json_t *k_cnvrt_get_remote_from_old_element(json_t *rule, int *errors, k_err_t *err);

/*
 * Port settings and port bandwidth: an object keyed by port name against a numbered list in ascending byte order of the
 * names, each entry the same object with the port's "name" added, and all that it has carried. Towards new, a value
 * that is not an object is carried without a name; towards old, entries without a string "name" are left out.
 * Messages towards new:
 *     Error allocated memory!\n (memory ran out; counts 1)
 */
int k_cnvrt_get_port_settings_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_settings_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_bandwidth_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_bandwidth_from_new(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
