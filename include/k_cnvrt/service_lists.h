/*
 * service_lists.h: the services that are lists of rules or accounts. Part of k_cnvrt.h, whose conventions hold; every
 * function is a section handler (k_cnvrt_handler_t).
 *
 * parse_old_X reads the old section and fills the new one, parse_new_X the other way. Of each, the members are on the
 * page of its name in docs/mapping. The old section is an array (of
 * "urlfilter" an object with an array inside), the new one a numbered list. `destination` is therefore an object
 * towards new; towards old an array, an object for parse_new_urlfilter.
 *
 * Unless a function says otherwise, entries are numbered by their position from 1 towards new, "max_instance" is their
 * count, and a source that is not an array, a null one too, gives {"max_instance": 0}. Towards old the numbers from 1
 * to the highest are walked, a missing one appends {}, and the list is bounded. An entry with a failed field is written
 * without it.
 */
#ifndef K_CNVRT_SERVICE_LISTS_H
#define K_CNVRT_SERVICE_LISTS_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * The IP filter. "action" is 0 or 1 in the old layout, "Allow" or "Deny" in the new one. "is_ipv6": true in the old
 * layout is "ipVersion": "IPv6" in the new one, anything else "IPv4". Towards new, "ipdType" and "ipsType" say what a
 * string in "ipd" and "ips" is: "IPRange" with a "-" in it, else "IPPrefix" with a "/", else "IPAddress". Towards old,
 * "id" is the rule's number.
 * Messages towards new:
 *     Invalid field "action", number != 0 or 1
 *     Invalid field "action", is not int
 * Messages towards old:
 *     Invalid field "action", is not "Allow" or "Deny"
 *     Invalid field "action", is not string.
 */
int parse_old_ipfilter(json_t *source, json_t *destination, k_err_t *err);
int parse_new_ipfilter(json_t *source, json_t *destination, k_err_t *err);

/*
 * The MAC filter. "mac" is a string (json_string_set_safe, json_string_old_set_safe). The old "id", an integer, is the
 * number of the new entry: entries keep their gaps, a later rule replaces an earlier one of the same id, and
 * "max_instance" is the largest id, at least 0. Towards old, nothing is appended for a gap, so that any number up to
 * 2147483647 will do.
 * Messages towards new:
 *     Invalid field "id", is not integer (absent, too: the rule is skipped)
 */
int parse_old_macfilter(json_t *source, json_t *destination, k_err_t *err);
int parse_new_macfilter(json_t *source, json_t *destination, k_err_t *err);

/*
 * The URL filter. Old {"setting": {"enable", "type"}, "url_list"} against new {"enable", "exclude", "url_list"}.
 * "enable" is a boolean in both layouts (json_boolean_set_safe); "exclude" is whether "type" is "Exclude", which is
 * "Include" otherwise. The entries of "url_list", which is bounded, are carried. Each part is written only where the
 * source has it; towards old, "setting" is, where the source has "enable" or "exclude".
 */
int parse_old_urlfilter(json_t *source, json_t *destination, k_err_t *err);
int parse_new_urlfilter(json_t *source, json_t *destination, k_err_t *err);

/* The DHCP option rules (docs/mapping/dhcp_opt_rule.md). */
int parse_old_dhcp_opt_rule(json_t *source, json_t *destination, k_err_t *err);
int parse_new_dhcp_opt_rule(json_t *source, json_t *destination, k_err_t *err);

/*
 * The virtual servers. "ports_begin", "ports_end", "portd_begin" and "portd_end" are texts in the old layout and
 * integers in the new one, "" and 0 for none; towards new, each must be there (a string of digits up to 4294967295,
 * read as a signed 32-bit number, or an integer); towards old, it may be absent, and its text is not cut.
 * Towards new, a source that is not an array writes nothing at all. Towards old, the members that are objects are
 * appended in their own order, gaps leave nothing, and "num" is the number that the member name begins with (2147483647
 * for any above) minus 1.
 * Messages towards new:
 *     Invalid field "KEY", error parsing integer from string
 *     Invalid field "KEY", is not string
 * Messages towards old:
 *     Invalid field "KEY", is not integer
 *     Invalid element of object NAME, index < 1 (the rule is appended without "num")
 */
int parse_old_vserver(json_t *source, json_t *destination, k_err_t *err);
int parse_new_vserver(json_t *source, json_t *destination, k_err_t *err);

/* The dynamic DNS accounts (docs/mapping/ddns.md). */
int parse_old_ddns(json_t *source, json_t *destination, k_err_t *err);
int parse_new_ddns(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
