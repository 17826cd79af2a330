// conditions.h: when a loss applies at all.
#pragma once

#include "rows.h"

// The row's "where", on the object that the place is in.
//   "has"                names that are all there         "lacks"       names that are all absent
//   "lacks one group"    groups of names, of which one is wholly absent
//   "lacks entries"      names of lists that are all empty or absent
//   "is", "is not"       members that all have, or of which one has not, that value
bool holds_in(const Row& row, json_t* object);

// The row's "in documents with": values by their paths.
bool is_for(const Row& row, json_t* document);

// The row's "when": the values that it speaks of, all where it says nothing.
bool speaks_of(const Row& row, json_t* value);
