/*
 * users.h: accounts and VLANs. Part of k_cnvrt.h, whose conventions hold; every function is a section handler
 * (k_cnvrt_handler_t).
 */
#ifndef K_CNVRT_USERS_H
#define K_CNVRT_USERS_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/*
 * The users of the management interfaces. The old layout has two shapes of them, and the new one keeps which in
 * "version": 0 for the array "passwd", a positive number for the object "users", whose "list" is keyed by login.
 * Passwords are plain text in the old layout and base64 in the new. A null source returns 0 and writes nothing.
 *
 * Towards old, `destination` decides which shape is written: an array takes version 0, an object a positive one, and the
 * other container is refused with the result 1 and no message; a caller tries both. Each number without an entry becomes
 * {} in the array. The password's messages are those of json_string_set_password_old.
 *     Field "version" is missing!
 *     Field "version" not integer!
 *     Error field "version" < 0
 *     Instance number %d is above 65535
 *
 * Towards new, `source` is an array of users, an object with "list", or an object that is a single user. The messages of
 * an array's or a single user's password come under "convert_old_users_element" (json_string_set_password).
 *     Invalid incoming json! Is not array or object!
 *     Error allocated memory!\n
 */
int k_cnvrt_get_users_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_users_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * System users: an array (old; `destination` is one towards old) against a numbered list, with the password as above and
 * "rule" a decimal text (old) or an integer (new). Each number without an entry becomes {} in the array.
 * Messages: json_string_set_password[_old], json_integer_set_safe, json_integer_old_set_safe, and
 *     Instance number %d is above 65535
 */
int k_cnvrt_get_sysusers_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_sysusers_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * VLAN groups: the object "vlan" (old) against "Vlan". The old VLAN identifier null is 1 in the new layout. A null source
 * returns 0 and writes nothing.
 *
 * Towards old, a number without an entry becomes {"pos": its position, "en": false} among the VLANs and "" among the
 * available ports; every port of a VLAN gets the VLAN's priority as "qos".
 *     json_boolean_set_safe's messages for "en"; Instance number %d is above 65535
 *
 * Towards new, the ports of a VLAN are numbered in ascending byte order of their names, and the "qos" of the last one
 * becomes "vlanprio". A VLAN whose "pos" is not its position in the array ends the list: those before it are kept.
 *     json_integer_set_safe's and json_boolean_set_safe's messages for "vid", "wanidx", "enable" and "vlanprio"
 *     Invalid field "pos", %lld != %zu
 *     Invalid field "ports", name of %zu characters is longer than 63 (the port is left out)
 */
int k_cnvrt_get_vlan_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_vlan_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * The same on devices with a DSL uplink (K_CNVRT_DSL_VLAN): interface groups of tagged and untagged ports (old) against
 * "Vlan". The VLAN of a WAN port is kept on the old service of the port's name. Always 0, no messages.
 *
 * Towards old, `destination` is the old root with "ifaces" already converted; it gets "group_index" and "groups", and the
 * services in question their "vlan". An empty `destination` gets the groups themselves.
 * Towards new, `source` is the old root.
 */
int k_cnvrt_get_vlan_dsl_from_new(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_vlan_dsl_from_old(json_t *source, json_t *destination, k_err_t *err);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
