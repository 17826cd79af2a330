/*
 * services.h: the services as a whole, and the small ones. Part of k_cnvrt.h, whose conventions hold; every function is
 * a section handler (k_cnvrt_handler_t) that fills an object.
 *
 * parse_old_X reads the old section and fills the new one, parse_new_X the other way. Of each, the members are on the
 * page of its name in docs/mapping.
 */
#ifndef K_CNVRT_SERVICES_H
#define K_CNVRT_SERVICES_H

#include <jansson.h>

#include "k_err.h"

#include "k_cnvrt/ipsec.h"
#include "k_cnvrt/service_lists.h"
#include "k_cnvrt/tr069.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * All services: "Services" of the new layout against sections of the old root. Towards new, `source` is the old root
 * and `destination` "Services"; towards old, `source` is "Services" and `destination` the old root.
 *
 * A service that is there goes through its parse_old_X or parse_new_X, and is written when it failed, too; one without
 * them is carried as a whole, as "yandex" is towards old. Old "dns" and "dns6" are new "dns" (see parse_old_dns), old
 * "ipsec" is "ipsec" in new "vpn", old "igmp" is new "igmpx".
 *
 * The result is the sum of the converters' results; towards new without those of "dns", "dns6" and "ipsec", whose
 * failures are reported and do not fail the services.
 */
int k_cnvrt_get_services_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_services_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * The multicast proxy (docs/mapping/udpxy.md). Towards new, a wrong "maxcli" is reported twice and counts 2.
 */
int parse_old_udpxy(json_t *source, json_t *destination, k_err_t *err);
int parse_new_udpxy(json_t *source, json_t *destination, k_err_t *err);

/* The filtered DNS, towards new only (docs/mapping/yandex.md). */
int parse_old_yandex(json_t *source, json_t *destination, k_err_t *err);

/* The web server (docs/mapping/httpd.md). */
int parse_old_httpd(json_t *source, json_t *destination, k_err_t *err);
int parse_new_httpd(json_t *source, json_t *destination, k_err_t *err);

/* The BitTorrent client (docs/mapping/transmission.md). */
int parse_old_transmission(json_t *source, json_t *destination, k_err_t *err);
int parse_new_transmission(json_t *source, json_t *destination, k_err_t *err);

/* The GPON registration (docs/mapping/gpon_settings.md). */
int parse_old_gpon_settings(json_t *source, json_t *destination, k_err_t *err);
int parse_new_gpon_settings(json_t *source, json_t *destination, k_err_t *err);

/*
 * The watchdog. "enable" is a boolean in both layouts (json_boolean_set_safe). The watched entries, objects, are
 * members named by number: from 0 in the old section itself, from 1 in the numbered list "list" of the new one, which
 * is always written. They are carried, each under its number plus or minus 1, with their gaps; "max_instance" is the
 * largest number, 0 for none. A member that is no object, or whose name is not a number up to 4294967295 in digits, is
 * no entry. Numbers wrap in 32 bits: 0 in "list" becomes 4294967295.
 */
int parse_old_watchdog(json_t *source, json_t *destination, k_err_t *err);
int parse_new_watchdog(json_t *source, json_t *destination, k_err_t *err);

/*
 * The media server. Old "enabled" is new "enable", a boolean in both layouts (json_boolean_set_safe). "media_dirs",
 * where the source has it, is an array in the old layout and a numbered list in the new one: towards new, each entry
 * has the "path" and "type" of its element; towards old, an entry is carried as a whole, and a missing number appends
 * {}; it is bounded.
 */
int parse_old_dlna(json_t *source, json_t *destination, k_err_t *err);
int parse_new_dlna(json_t *source, json_t *destination, k_err_t *err);

/*
 * The NTP client. "hour" is a text in the old layout and an integer in the new: towards new, it must be there, is read
 * as strtol reads it, leading blanks and a sign allowed, into 64 bits, and "" is 0; towards old, it may be absent
 * (json_integer_old_set_safe). "servers" and "dhcp-servers", each where the source has it, are arrays of names in the
 * old layout and numbered lists of {"name"} in the new one; names are carried. Towards old, an entry without "name"
 * appends nothing and a missing number ""; both are bounded.
 * Messages towards new:
 *     Invalid field "hour", string not contains digits
 *     Invalid field "hour", is not string (absent, too, so that a null source fails)
 */
int parse_old_ntpclient(json_t *source, json_t *destination, k_err_t *err);
int parse_new_ntpclient(json_t *source, json_t *destination, k_err_t *err);

/*
 * The DNS servers: the old sections "dns" and "dns6" against the parts "ipv4" and "ipv6" of new "dns". Towards new,
 * `source` is the old section and `destination` new "dns", which gets its part, {} for an absent section. Towards old,
 * `source` is new "dns" and `destination` the old section, which stays empty for an absent part.
 *
 * "servers" is a text in the old layout, "|" after each address, and a numbered list of addresses in the new one.
 * Towards new, nothing between two "|" is no address, and a value that is not a string gives an empty list. Towards
 * old, the text is always written, a missing number leaves nothing, and a bad entry is left out; any number up to
 * 2147483647 will do.
 * Messages towards new, under "parse_dns":
 *     Invalid field "servers", is not string
 * Messages towards old, under "parse_dns":
 *     Invalid instance of field "servers", is not string
 */
int parse_old_dns(json_t *source, json_t *destination, k_err_t *err);
int parse_new_dns(json_t *source, json_t *destination, k_err_t *err);
int parse_old_dns6(json_t *source, json_t *destination, k_err_t *err);
int parse_new_dns6(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
