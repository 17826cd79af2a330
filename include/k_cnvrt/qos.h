/*
 * qos.h: quality of service. Part of k_cnvrt.h, whose conventions hold; both functions are section handlers
 * (k_cnvrt_handler_t). The members are in docs/mapping/queuemanagement.md and docs/mapping/qos.md.
 *
 * There are two generations of the section. An old one is of the current generation when it has "Queue", else of the
 * legacy generation when it has "links"; a new one says which in "QosVersion", 2 or 1.
 *
 * Current generation (old "queuemanagement"): "Queue", "Classification", "Policer" and the settings are carried. What
 * differs:
 *                                               old layout                        new layout
 *   a class's "DestMask" and "SourceMask"       "", a prefix length or a mask     -1, prefix length
 *   "Policer"."PolicesStatus"                   may be ""                         "" became "Enabled"
 *   "QueueNumberOfEntries" and the policer's    the members minus one             left out
 *   "ClassificationNumberOfEntries"             the members minus two             left out
 *
 * Legacy generation (old "qos"), every entry under its number, "max_instance" carried:
 *   A "links" entry is a "Queue" entry; a "filters" entry is an entry of "Classification" and one of "Policer". The
 *   three lists, or the two, are always written. Protocols and DSCP marks are names in the old layout and numbers in
 *   the new (the mark 0 comes back as "CS0"), and "multiport" and "iprange" are first and last apart. The scheduler of
 *   an old link or filter is always "htb". Joined addresses are cut to 63 characters.
 */
#ifndef K_CNVRT_QOS_H
#define K_CNVRT_QOS_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * "QoS", towards new. A section of neither generation, a null one included, writes nothing and returns 1.
 * Messages, each one failure but for that of a mask's type, which is not counted, come under
 *   k_cnvrt_get_qos_from_old  Error version QoS!
 *   convert_new_qos           Error mask! Is not in range 0-32! It value N
 *                             Error mask. It is not the number in the line and IP address. Is value is TEXT
 *                             Error mask. It isn't JSON_STRING or JSON_INTEGER. It - TYPE
 *                             those of json_string_set_def for "PolicesStatus"
 *                             (what failed stays as it was, and so does a mask that is an integer already)
 *   convert_links             those of json_integer_set_safe for "ceil" and "rate", under their new names
 *   convert_filters           Error protocol version! (the protocol is written as 0)
 *                             those of json_integer_set_safe for "ceil" and "rate", under their new names
 *   set_mark                  Error mark [NAME]!
 *   convert_multiport         Error format "multiport" (TEXT)!
 *   convert_iprange           Error format "iprange" (TEXT)
 * Ports beyond the range of int become the nearest int.
 */
int k_cnvrt_get_qos_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * "queuemanagement" or "qos", towards old. Another "QosVersion" than 1 and 2, none, or a null section writes
 * nothing and returns 1.
 * Messages, each one failure but for that of a mask's type, which is not counted, come under
 *   k_cnvrt_get_qos_from_new  Error version QoS!
 *   convert_new_qos           Wrong format mask [KEY]. His type is TYPE (it stays as it was)
 *   convert_old_qos           those of json_integer_old_set_safe for "ceil" and "rate"
 *   set_protocol              Error number protocol! (N) (0 for what is no integer)
 *   set_mark                  Error mark! His number is N
 *                             Error field format! Is not integer!
 */
int k_cnvrt_get_qos_from_new(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
