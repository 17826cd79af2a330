// complete.h: an example with everything in it, and nothing twice.
#pragma once

#include "conversion.h"
#include "names.h"

namespace describe {

// Gives every interface a service of each type that it can have, with every member that one of them has.
void add_services(Side side, json_t* document, const PlaceNames& names);

// Takes out the entries of lists that bring no place of their own to the document or to what it becomes.
void leave_out_repetitions(Side side, uint8_t flags, json_t* document, const PlaceNames& names);

}  // namespace describe
