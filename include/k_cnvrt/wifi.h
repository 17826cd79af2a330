/*
 * wifi.h: the radios and roaming. Part of k_cnvrt.h, whose conventions hold; every function is a section handler
 * (k_cnvrt_handler_t). The members are in docs/mapping/wifi.md and docs/mapping/roaming.md.
 */
#ifndef K_CNVRT_WIFI_H
#define K_CNVRT_WIFI_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif
#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/*
 * The radios, towards new: `source` is the flat old "wifi", which keeps both radios side by side (the 5 GHz radio's
 * members begin with "5G_"), and `destination` is the new "WiFi": {"CountryCode", "Radio": numbered list of radios}.
 *
 * "Radio" always has "1", the 2.4 GHz radio. "2", the 5 GHz radio, is left out when the source has none of its settings
 * and SSIDs; what failed in them counts all the same. What the old layout keeps once (WMM parameters, WDS links, WPS
 * PINs) or once for each radio (RADIUS, rekeying) is given to every SSID or radio. WEP keys and WDS links are taken
 * when all four are there. The client mode goes to the radio that "ApCliRangeFreq" names ("2.4 GHz" or "5 GHz").
 *
 * Numbers are converted by json_integer_set_safe, "PreAuth" by json_boolean_set_safe, "Ssid" by json_string_set_safe,
 * and what has a default, authentication modes for one, by json_string_set_def, whose message names no field.
 * Messages, under "parseG" for a radio's fields and "parseMbssid" for those of an SSID:
 *     Invalid field "Channel", is not string
 *     Invalid field "Channel", string "TEXT" != number or "auto"
 *     Invalid field "BGProtection", is not string
 *     Invalid field "BGProtection", "TEXT" != ["0","1","2"]
 *     Invalid field "TxPreamble", is not string
 *     Invalid field "TxPreamble", string "TEXT" != ["0", "1", "long", "short"]
 *     Invalid field "BandWidth", is not integer
 *     Invalid field "BandWidth", out of range - N != [0,1,2,3,4]
 *     Invalid field "WscConfMode", it isn't string. (this and the next four have the old name)
 *     Invalid field "WscConfMode", it invalid string.
 *     Invalid field "ApCliDefaultKeyId", is not string value
 *     Invalid field "ApCliDefaultKeyId", TEXT not constains digits
 *     Invalid field "ApCliDefaultKeyId", N not in range [0-4]
 *     Invalid field "AccessPolicy" has invalid type
 *     Invalid field "AccessPolicy" isn't digit
 *     Invalid field "AccessPolicy", out of range - N != [0,1,2]
 */
int k_cnvrt_get_wifi_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * The radios, towards old, from every member of "Radio" that is an object, in its order; "FrequencyBand" "5GHz" makes
 * it the 5 GHz radio, anything else the 2.4 GHz one. "mbssid" (or "5G_mbssid") is an array with an element for every
 * number, {} for a missing one; the list is bounded. A radio without "mbssid" has [], also in place of the array that
 * an earlier radio of its band wrote. Settings that the old layout keeps once are those of the last SSID or radio that
 * has them. Some members are written with the prefix although they are read without it (WDS links, WPS): the directions
 * differ on purpose.
 *
 * A client mode is written when none before it had "Enable", or when its own "Enable" is true. It is written over the
 * ones before it: what it does not have itself stays.
 *
 * Numbers are converted by json_integer_old_set_safe, "PreAuth" by json_boolean_old_set_safe; their messages name the
 * old field, with its prefix.
 * Messages, under "parseMbssid" for the fields of an SSID's own element and "session_timeout_interval":
 *     Invalid field "Channel", is not integer
 *     Invalid field "Channel", Channel [N] < 0
 *     Invalid field "BGProtection", "TEXT" != ["auto", "enable", "disable"]
 *     Invalid field "TxPreamble". Is not boolean. He type is TYPE
 *     Invalid field "HTCoexistance" isn't JSON_BOOLEAN
 *     Invalid field "ExtensionChannel", TEXT != below or above
 *     Invalid field "BandWidth", TEXT != [20MHz, 40MHz, 80MHz]
 *     Invalid field "BandWidth", ExtensionChannel != "auto" (the band width is not a string)
 *     Invalid field "WscEnable", is not boolean
 *     Invalid field "DefaultKeyId", is not integer
 *     Invalid field "DefaultKeyId", N not in range [0-4]
 *     Invalid field "AccessPolicy", is not string
 *     Invalid field "AccessPolicy", value "TEXT" != ["disable", "allow", "deny" (without the closing bracket)
 */
int k_cnvrt_get_wifi_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * Roaming, towards new: the port, the multicast channel and the thresholds of each band, each checked against its range
 * (port below 65536; with multicast on, TTL 0 to 255 and group 239.255.0.0 to 239.255.255.255; quality limit 0 to 100,
 * quality width -50 to 50, no negative timeout). A value out of range is reported, counted and written as it is;
 * integers are cut to 32 bits before.
 *
 * Of the service these are "enable", "portno", "mc_switch", and optional "mc_ttl" and "mc_groupaddr". They are read in
 * this order up to the first that is missing or of a wrong type; those not read are 0, false, or absent. The fields of
 * a band are read likewise. A source that is null or no object has none of them, which is reported.
 *
 * With multicast on, an absent TTL is -1, and without an address "MulticastSettings" is left out. With multicast off,
 * an absent TTL is 32 and an absent address "".
 * "BandSettings" always has "1", the 2.4 GHz band; "2", the 5 GHz band, where the source has one of its fields.
 *
 * Messages, each one failure:
 *     Invalid field 'enable'|'portno'|'mc_switch'|'mc_ttl'|'mc_groupaddr'
 *     Roaming port ange error
 *     Roaming multicast is enabled, but TTL|Groupaddr is missing
 *     Roaming multicast TTL range error (an absent one, too)
 *     Roaming multicast group address range error
 * Messages of the bands, under "parseRoamingBand":
 *     Invalid field 'KEY'|'KEY'|'KEY', is not integer value
 *     Field 'KEY'|' range error
 */
int k_cnvrt_get_roaming_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * Roaming, towards old. Always 0, no messages and no range checks: what cannot be read, and what comes after it, is 0
 * or false, a group address is left out; so it is with a null source. A band of another name than "5GHz" is the 2.4 GHz
 * one. Each call prints one line on standard output, or into a record that keeps it (k_err_keep_printed): what could
 * not be read first, or an empty line.
 */
int k_cnvrt_get_roaming_from_new(json_t *source, json_t *destination, k_err_t *err);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
