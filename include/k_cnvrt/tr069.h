/*
 * tr069.h: the settings of the TR-069 client. Part of k_cnvrt.h, whose conventions hold; both functions are section
 * handlers (k_cnvrt_handler_t) that fill an object. "DeviceInfo", which the old section holds too, belongs to device.h.
 */
#ifndef K_CNVRT_TR069_H
#define K_CNVRT_TR069_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * The members are in docs/mapping/tr069.md. "max_envs" is an integer that is "" in the old layout when it is 0; towards
 * new, a value that is not a string is dropped, towards old, one that is not an integer becomes "", both without a
 * message. The rest is written where the source has it:
 *
 * "notify"            an array against a numbered list, entries carried.
 * "misc"              see below. Reported under "parse_misc".
 * "managementserver"  how the server is reached. Reported under "parse_managementserver".
 * "file_trans"        an array against a numbered list of transfers. Reported under "parse_file_trans".
 *
 * Towards old, a missing number appends {}; "notify" and "file_trans" are bounded.
 *
 * Inside "misc", objects keyed by instance number keep their names, and their "max_instance" is carried:
 *
 * "wandevice"         each object, and in it each object in "ipconn" and "pppconn".
 * "bridge"            each object: "VLANID" is an integer, of which 1 is null in the old layout.
 * "route_17_33"       each instance is one JSON text in the old layout, compact, and the value itself in the new one.
 *                     Towards new, an instance is a member named by decimal digits, up to 4294967295, and must be a
 *                     string with the JSON text of an object or an array; a text that is a single number, say, is none.
 *                     Towards old, an instance is a member that is an object; others, arrays too, are dropped.
 * "arp"               the same.
 * "Filter","Marking"  towards new, a copy (of what is no object, of {}) with "FilterStatus", "MarkingStatus": "Enabled"
 *                     where it is absent or ""; a status that is not a string is reported (json_string_set_def) and
 *                     stays as it is. Towards old, carried as a whole.
 *
 * Messages towards new:
 *     Invalid field "VLANID"! Is not NULL ot INTEGER
 *     Invalid invalid instance of object "route_17_33"
 *     Invalid invalid instance of object "arp" NAME\n
 * Messages towards old:
 *     Error field "VLANID"! Is not integer!
 */
int parse_old_tr069(json_t *source, json_t *destination, k_err_t *err);
int parse_new_tr069(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
