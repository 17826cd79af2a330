// flat_entries.h: numbered entries whose members the old layout keeps under flat names: "Key%dStr", "Wds%dKey",
// "ApCliKey%dType". And objects that the new layout holds only when something is in them.
#pragma once

#include "wifi/old_radio.h"

namespace kcnvrt {

// The old layout numbers its flat names from 1 to this.
inline constexpr int kFlatEntries = 4;

// Sets an object that has members; an empty one is left out.
void set_filled(json_t* object, Key key, Json value);

// "max_instance" as the count of the members that are there.
void count_entries(json_t* list);

// Entries 1 to 4 from their flat names. An entry without a member is left out.
int entries_to_new(PlacedFields entry, const OldRadio& old, json_t* list, const Report& report);

// The same as a numbered list under `key`, and only when it is complete: with an entry missing it is left out as a
// whole.
int complete_entries_to_new(PlacedFields entry, const OldRadio& old, json_t* object, Key key, const Report& report);

// Writes the members that are objects under flat names, numbered in their order. What the members are called does not
// matter.
int entries_to_old(PlacedFields entry, json_t* list, const OldRadio& old, const Report& report);

}  // namespace kcnvrt
