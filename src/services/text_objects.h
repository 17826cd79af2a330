// text_objects.h: objects keyed by instance number that the old layout keeps as one JSON text each.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

namespace ways {

// Old to new: a text becomes the object or array that it says; the two differ in what they report of a text that says
// neither. Members whose names are not numbers are dropped, except "max_instance", which is carried.
int routes_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int arp_to_new(json_t* destination, Key key, json_t* value, const Report& report);

// New to old: an object becomes its compact text, whatever its name is, members in their order. Anything else is
// dropped, an array too, which therefore does not come back; except "max_instance", which is carried.
int texts_of_objects(json_t* destination, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::routes_to_new, ways::texts_of_objects> text_routes;
inline constexpr Word<ways::arp_to_new, ways::texts_of_objects> text_arp;

}  // namespace kcnvrt
