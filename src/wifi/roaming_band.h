// roaming_band.h: the signal thresholds of the radio bands.
#pragma once

#include "frame/json.h"
#include "k_err.h"

namespace kcnvrt {

// Fills `bands` from the old "roaming" object, with "max_instance". The 2.4 GHz band is always there; the 5 GHz band is
// left out when the old object says nothing of it. Returns the count of failures, reported under "parseRoamingBand".
int bands_to_new(json_t* old_roaming, json_t* bands, k_err_t* err);

// Writes every band's fields into the old "roaming" object. A field that cannot be read is 0.
void bands_to_old(json_t* bands, json_t* old_roaming);

}  // namespace kcnvrt
