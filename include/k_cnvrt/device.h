/*
 * device.h: the small sections of a device. Part of k_cnvrt.h, whose conventions hold; every function is a section
 * handler (k_cnvrt_handler_t) unless it says otherwise.
 */
#ifndef K_CNVRT_DEVICE_H
#define K_CNVRT_DEVICE_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/*
 * Device information: mode, provisioning code, model, auto-login, language. `destination` is the other configuration's
 * root (towards old) or "Device" (towards new), and `source` is "DeviceInfo" or the old root. Always 0, no messages.
 *
 * The two directions differ on purpose: the model name goes only towards the old layout, and the auto-login setting is
 * written into the TR-069 block but read from "users"."services"."web", only where a TR-069 block exists.
 */
int k_cnvrt_get_deviceinfo_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_deviceinfo_from_old(json_t *source, json_t *destination, k_err_t *err);

/* The operator's customization block, carried as it stands. Towards old, `destination` is the old root; towards new,
 * `source` is the old root and `destination` "Customization". Always 0, no messages. */
int k_cnvrt_get_customs_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_customs_from_old(json_t *source, json_t *destination, k_err_t *err);

/* The default SSIDs of both bands. The result is wrapped: `destination` gets one member "default_ssid" (towards old) or
 * "Default_ssid" (towards new), also when the source has neither band. Always 0, no messages.
 * Callers link against this spelling of the names. */
int k_cnvtr_get_default_ssid_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvtr_get_default_ssid_from_old(json_t *source, json_t *destination, k_err_t *err);

/* The VLAN identifiers of the WAN ports: an object keyed by interface name against a numbered list of {"name", "pvid"},
 * numbered in ascending byte order of the names. Always 0, no messages. */
int k_cnvrt_get_wan_pvid_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_wan_pvid_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * The routing section, routes and RIP together. Towards old, `destination` is the old root and gets "route" (always) and
 * "rip" (where the source has "RIP"); towards new, `source` is the old root and `destination` "Routing".
 * The result is that of RIP alone: a bad route is reported and left out, and never rejects a configuration.
 */
int k_cnvrt_get_routing_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_routing_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * Static routes: an array of routes of both families against the numbered lists "ipv4"."Routes" and "ipv6"."Routes" of
 * the routing section, numbered together by array position, so that each list has gaps where the other family's routes
 * stand and its "max_instance" is its highest number.
 *
 * Towards old, `destination` is an array that gets one element per number, {} for a missing one. An IPv6 route whose
 * number an IPv4 route also has is not converted, and without an IPv4 list nothing is.
 *     Instance number %d is above 65535
 * Towards new, `destination` is the routing section. A route whose "ip" is neither an IPv4 address nor an IPv6 prefix
 * (a length of 128 is added where there is none) is left out:
 *     Invalid field ip!\n
 * and where memory runs out: Error json_pack!\n, strdup error:\n or realloc error:\n
 */
int k_cnvrt_get_route_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_route_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * RIP: an object keyed by interface against a numbered list in ascending byte order of the interface names. An entry that
 * is not an object leaves its number out. A null source returns 0 and writes nothing. "version" is a decimal text in the
 * old layout and an integer in the new: json_integer_old_set_safe, json_integer_set_safe.
 *     Error allocated memory!\n
 */
int k_cnvrt_get_rip_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_rip_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * Remote access rules: an array, or an object that is a single rule, against a numbered list. The ports are decimal texts
 * in the old layout and integers in the new: json_integer_old_set_safe, json_integer_set_safe. A null source returns 0
 * and writes nothing. Towards old, `destination` is an array that gets {} for a missing number.
 *     Instance number %d is above 65535
 */
int k_cnvrt_get_remote_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_remote_from_old(json_t *source, json_t *destination, k_err_t *err);

/* One old remote access rule as a new one, which the caller owns. Adds its failed fields to `errors`. */
json_t *k_cnvrt_get_remote_from_old_element(json_t *rule, int *errors, k_err_t *err);

/*
 * Port settings and port bandwidth: an object keyed by port name against a numbered list in ascending byte order of the
 * names, each entry the same object with the port's "name" added. Towards old, entries without a string "name" are left
 * out; towards new, a value that is not an object is carried without a name. A null source returns 0 and writes nothing.
 * 0, or 1 where memory ran out, with the message: Error allocated memory!\n
 */
int k_cnvrt_get_port_settings_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_settings_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_bandwidth_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_port_bandwidth_from_old(json_t *source, json_t *destination, k_err_t *err);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
