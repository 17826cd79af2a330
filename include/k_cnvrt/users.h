/*
 * users.h: accounts and VLANs. Part of k_cnvrt.h, whose conventions hold; every function is a section handler
 * (k_cnvrt_handler_t). The members are in docs/mapping: passwd.md, users.md, sysusers.md, vlan.md, groups.md.
 */
#ifndef K_CNVRT_USERS_H
#define K_CNVRT_USERS_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * The users of the management interfaces. The old layout has two shapes of them, and the new one keeps which in
 * "version": 0 for the array "passwd", a positive number for the object "users", whose "list" is keyed by login.
 * Passwords are plain text in the old layout and base64 in the new (json_string_set_password,
 * json_string_set_password_old).
 *
 * Towards new, `source` is an array of users, an object with "list" (without "version" it is version 1), or an object
 * that is a single user. The messages of an array's or a single user's password come under "convert_old_users_element".
 *
 * Towards old, `destination` decides which shape is written: an array takes version 0, an object a positive one, and
 * the other container is refused with the result 1 and no message; a caller tries both. The array gets {} for a missing
 * number; its list is bounded. An entry without a string "login" is left out of the object.
 * Messages towards new:
 *     Invalid incoming json! Is not array or object!
 *     Error allocated memory!\n (memory ran out; counts 1)
 * Messages towards old:
 *     Field "version" is missing!
 *     Field "version" not integer!
 *     Error field "version" < 0
 */
int k_cnvrt_get_users_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_users_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * System users: an array against a numbered list, with the password as above and "rule" a decimal text in the old
 * layout and an integer in the new (json_integer_set_safe, json_integer_old_set_safe). Towards new, a source that is
 * not an array gives {"max_instance": 0}, a null one nothing. Towards old, `destination` is an array that gets {} for a
 * missing number; the list is bounded.
 */
int k_cnvrt_get_sysusers_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_sysusers_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * VLAN groups: the object "vlan" (old) against "Vlan". The old VLAN identifier null is 1 in the new layout. Old "en" is
 * new "enable", a boolean in both layouts (json_boolean_set_safe).
 *
 * Towards new, "vid", "wanidx" and the ports' "qos" become integers (json_integer_set_safe). The ports of a VLAN are
 * numbered in ascending byte order of their names, and the "qos" of the last one that has it becomes "vlanprio". A VLAN
 * whose "pos" is there and not its position in the array, from 0, ends the list: those before it are kept. Without
 * "vlans", "vlans_enable" is left out, too.
 *
 * Towards old, a missing number becomes {"pos": its position, "en": false} among the VLANs and "" among the available
 * ports; both lists are bounded. Of the available ports an entry without "name" appends nothing. Every port of a VLAN
 * gets the VLAN's priority as "qos".
 * Messages towards new:
 *     Invalid field "pos", N != N (the "pos", and the position)
 *     Invalid field "ports", name of N characters is longer than 63 (the port is left out; N counts bytes)
 */
int k_cnvrt_get_vlan_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_vlan_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * The same on devices with a DSL uplink (K_CNVRT_DSL_VLAN): interface groups of tagged and untagged ports (old) against
 * "Vlan". The VLAN of a port, identifier and priority, is kept on the old services of the port's name. Always 0, no
 * messages.
 *
 * Towards new, `source` is the old root. A port whose services say nothing is in VLAN 1, with the priority 0. Without
 * "groups", or with none in it, nothing is written.
 *
 * Towards old, `destination` is the old root with "ifaces" already converted; it gets "group_index" and "groups", and
 * the services in question their "vlan", of VLANs with an identifier of 2 or more only. An empty `destination` gets the
 * groups themselves. A VLAN without a string "ifname" is left out; without "vlans" nothing is written.
 */
int k_cnvrt_get_vlan_dsl_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_vlan_dsl_from_new(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
