/*
 * wifi.h: the radios and roaming. Part of k_cnvrt.h, whose conventions hold; every function is a section handler
 * (k_cnvrt_handler_t).
 */
#ifndef K_CNVRT_WIFI_H
#define K_CNVRT_WIFI_H

#include <jansson.h>

#include "k_err.h"

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/*
 * The radios, towards new: `source` is the flat old "wifi", which keeps both radios side by side (the 5 GHz radio's
 * members begin with "5G_"), and `destination` is the new "WiFi": {"CountryCode", "Radio": numbered list of radios}.
 * A null source returns 0 and writes nothing.
 *
 * "Radio" always has "1", the 2.4 GHz radio. "2", the 5 GHz radio, is left out when the source has none of its settings
 * and SSIDs; what failed in them counts all the same. What the old layout keeps once (WMM parameters, WDS links, WPS
 * PINs) or once for each radio (RADIUS, rekeying) is given to every SSID or radio. WEP keys and WDS links are taken when
 * all four are there. The client mode goes to the radio that "ApCliRangeFreq" names ("2.4 GHz" or "5 GHz").
 * Messages carry "parseG" for a radio's fields and "parseMbssid" for those of an SSID, and name the new field.
 */
int k_cnvrt_get_wifi_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * The radios, towards old, from every member of "Radio" that is an object, in its order; "FrequencyBand" "5GHz" makes it
 * the 5 GHz radio. "mbssid" (or "5G_mbssid") is an array with an element for every number, {} for a missing one; with a
 * number above K_CNVRT_MAX_INSTANCE it fails and is empty. Settings that the old layout keeps once are those of the last
 * SSID or radio that has them. Of several client modes the first is kept, unless a later one is enabled.
 * Some members are written with the prefix although they are read without it (WDS links, WPS): the directions differ on
 * purpose. A null source returns 0 and writes nothing.
 * Messages carry "k_cnvrt_get_wifi_from_new", and "parseMbssid" for the fields of an SSID's own element.
 */
int k_cnvrt_get_wifi_from_new(json_t *source, json_t *destination, k_err_t *err);

/*
 * Roaming, towards new: the port, the multicast channel and the thresholds of each band, each checked against its range
 * (port below 65536; with multicast on, TTL 0 to 255 and group 239.255.0.0 to 239.255.255.255; quality limit 0 to 100,
 * quality width -50 to 50, no negative timeout). A value out of range is reported, counted and written as it is. A source
 * that is null or no object has none of its fields, which is reported.
 * "BandSettings" always has "1", the 2.4 GHz band; "2", the 5 GHz band, where the source has one of its fields.
 * Messages carry "k_cnvrt_get_roaming_from_old", and "parseRoamingBand" for the bands.
 */
int k_cnvrt_get_roaming_from_old(json_t *source, json_t *destination, k_err_t *err);

/*
 * Roaming, towards old. Always 0, no messages and no range checks: what cannot be read is 0 or false, and a group address
 * that cannot be read is left out. Each call prints one line on standard output: what could not be read, or an empty line.
 */
int k_cnvrt_get_roaming_from_new(json_t *source, json_t *destination, k_err_t *err);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
