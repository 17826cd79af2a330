/*
 * ifaces.h: interfaces, physical and logical. Part of k_cnvrt.h, whose conventions hold; every function is a section
 * handler (k_cnvrt_handler_t).
 *
 * In the old layout an interface is a member of "ifaces" under its name and says its "type"; its "services", the
 * connections over it, are members under their names likewise. In the new layout there is a numbered list for each type
 * of interface and of service, and an entry carries its name as "ifname_l2", "ifname_l3" or, for a tunnel,
 * "ifname_tun". The members of each type are in docs/mapping/ifaces.md.
 */
#ifndef K_CNVRT_IFACES_H
#define K_CNVRT_IFACES_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * The whole interface block: the interfaces, "phys_ifaces", "ppp_inf", "lan", "max_table_id", "pppoe_pass_through" and
 * "usbmodem_autoconnect", which are members of the old root and of the new "Ifaces".
 *
 * Towards new, `source` is the old root and `destination` "Device", which gets "Ifaces" in every case. Towards old,
 * `source` is the new root and `destination` the old root. Without "Device"."Ifaces" nothing is written; with it,
 * "ifaces" is written in every case.
 *
 * "max_table_id" is an integer in both layouts (json_integer_set_safe). "phys_ifaces" never counts. Towards old,
 * "ppp_inf" and "lan" are bounded.
 */
int k_cnvrt_get_ifaces_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_ifaces_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * The interfaces alone: `source` is the old "ifaces" or the new "Ifaces", and `destination` the other of the two.
 *
 * Towards new, an interface without a "type", or of another than "bridge", "ethernet", "3g", "lte", "atm" and "auto",
 * is skipped without a message. Entries are numbered for each type, from 1, in ascending byte order of the names; a
 * type without interfaces has no list.
 *
 * Towards old, a list of interfaces whose "max_instance" is not an integer of at least 1 is skipped. So is one of the
 * services of an Ethernet or ATM interface, but for "ipv6", and one of IPv6 addresses. Of all other lists
 * "max_instance" is not read. Entries without a name are not stored, though their problems are reported and counted; of
 * two with the same name the later one stays. The numbers are dropped. The lists of names ("members", "lock") and of
 * reserved hosts are bounded, of which "lock" in a "bridge" or "ipv6" service of an Ethernet or ATM interface counts 0.
 *
 * Messages: those of the field helpers (fields.h), under
 *   parse_TYPE                      an interface, towards new; also the services of "auto"
 *   parse_new_TYPE                  an interface, towards old; also the services of "auto", "bridge" and "lte"
 *   parse_ip_services_forBridge, parse_ip_services_forLte
 *                                   the services of "bridge" and "lte", towards new
 *   parse_ppp_services_for3g        the services of "3g"
 *   parse_service_TYPE              the services of an Ethernet or ATM interface; towards new, "pppdual" is "pppv6"
 *   parse_services_TYPE             those of "ppp", "pppv6" and "pppdual" among them, towards old
 *   parse_tunnels, parse_8021x      the tunnels and the 802.1X settings of a service
 * Messages towards old:
 *     Error parsing port number! Port name is NAME (the only port of an interface: NAME contains "Port", "WiFi" or
 *         "WIFI" but does not begin with it and a number, and is no "WiFiClient..."; "port" is left out)
 */
int k_cnvrt_get_sections_ifaces_from_old(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_get_sections_ifaces_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * The physical interfaces, "phys_ifaces" in both layouts: the radios ("wifi", old "wifi_2G") and the names of the LAN
 * and WAN ports ("lans", "wans").
 *
 * A device with two radios has the 5 GHz one in the old "wifi" and the 2.4 GHz one in "wifi_2G"; in the new list the
 * 2.4 GHz radio is "1" and the 5 GHz radio "2", each with its "MHz" (2400 or 5000), which is not read.
 *
 * Towards old, the list's "max_instance" says how many radios there are; none is written when it is neither 1 nor 2.
 * "lans" and "wans" are bounded, but count 0.
 *
 * 1 without a message when the section is absent (a null source), and nothing is written; 0 otherwise.
 */
int k_cnvrt_parse_old_phys_ifaces(json_t *source, json_t *destination, k_err_t *err);
int k_cnvrt_parse_new_phys(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
