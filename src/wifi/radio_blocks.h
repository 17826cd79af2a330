// radio_blocks.h: a radio and the blocks inside it. Each converts both ways in the file of its name, and returns the
// count of failed fields. Towards new a block sets itself in `radio` or `ssid`; towards old it writes through `old`,
// wherever its fields stand.
#pragma once

#include "wifi/old_radio.h"

namespace kcnvrt {

// One radio, with all of its blocks. A 5 GHz radio that the old object says nothing of is left out.
int radio_to_new(const OldRadio& old, json_t* radios, k_err_t* err);
int radio_to_old(json_t* radio, const OldRadio& old, const Report& report);

int additional_to_new(const OldRadio& old, json_t* radio, const Report& report);
int additional_to_old(json_t* additional, const OldRadio& old, const Report& report);

// Failures of an SSID's own fields are reported under "parseMbssid".
int ssids_to_new(const OldRadio& old, json_t* radio, const Report& report);
int ssids_to_old(json_t* ssids, const OldRadio& old, const Report& report);

int security_to_new(const OldRadio& old, json_t* ssid, const Report& report);
int security_to_old(json_t* security, const OldRadio& old, const Report& report);

int mac_filter_to_new(const OldRadio& old, json_t* ssid, const Report& report);
int mac_filter_to_old(json_t* filter, const OldRadio& old, const Report& report);

int wds_to_new(const OldRadio& old, json_t* radio, const Report& report);
int wds_to_old(json_t* wds, const OldRadio& old, const Report& report);

int wps_to_new(const OldRadio& old, json_t* radio, const Report& report);
int wps_to_old(json_t* wps, const OldRadio& old, const Report& report);

int client_mode_to_new(const OldRadio& old, json_t* radio, const Report& report);
int client_mode_to_old(json_t* client, const OldRadio& old, const Report& report);

}  // namespace kcnvrt
