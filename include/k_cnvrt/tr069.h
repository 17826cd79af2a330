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

#pragma GCC visibility push(default)

/*
 * Attached: "iface", "enable", "l2_key", "l3_key". Integers: "end_port", "debug_mode", "start_port", "authenticate",
 * "getrpcmethodsenable", "schedule_inform_time". "max_envs" is an integer that is "" in the old layout when it is 0.
 * The rest is written where the source has it:
 *
 * "notify"            an array against a numbered list, entries attached.
 * "misc"              see below. Reported under "parse_misc".
 * "managementserver"  how the server is reached: "periodicinformenable" (a boolean), "periodicinforminterval" (an
 *                     integer), "password" and "connectionrequestpassword", and five attached members. Reported under
 *                     "parse_managementserver".
 * "file_trans"        an array against a numbered list of transfers: "password", and nine attached members. Reported
 *                     under "parse_file_trans".
 *
 * Towards old a missing number of a list appends {}, and a number above K_CNVRT_MAX_INSTANCE is reported, counts 1 and
 * leaves the list empty.
 *
 * Inside "misc", objects keyed by instance number keep their names, and their "max_instance" is attached:
 *
 * "wandevice"         "pos", and of each connection in "ipconn" and "pppconn" "mio_id" and "PortMapping".
 * "bridge"            seven attached members, and "VLANID": null in the old layout is 1 in the new one. Otherwise it is
 *                     an integer. Messages: Invalid field "VLANID"! Is not NULL ot INTEGER (towards new), and
 *                     Error field "VLANID"! Is not integer! (towards old)
 * "route_17_33"       each instance is one JSON text in the old layout, and the value itself in the new one. The texts
 *                     are compact. Towards new an instance is a member named by decimal digits, up to 4294967295; its
 *                     text must be an object or an array. Towards old an instance is a member that is an object;
 *                     others, arrays too, are dropped. Message: Invalid invalid instance of object "route_17_33"
 * "arp"               the same. Message, with a line feed at its end: Invalid invalid instance of object "arp" NAME
 * "Filter","Marking"  towards new a copy with "FilterStatus", "MarkingStatus", "Enabled" where it is absent or ""; a
 *                     status that is not a string is reported and stays as it is. Towards old attached.
 * the others          "previousurl", "rebootcmdkey", "schedulecmdkey", "wc", "landevice" and "AvailableInterface" are
 *                     attached.
 *
 * The result is the number of failed fields. Other members are dropped.
 */
int parse_old_tr069(json_t *source, json_t *destination, k_err_t *err);
int parse_new_tr069(json_t *source, json_t *destination, k_err_t *err);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
