// schema.h: a layout as a JSON Schema (draft 2020-12).
#pragma once

#include "layouts.h"
#include "place_tree.h"

namespace kcnvrt {

// Of a node and all that is in it. A closed one forbids the members that are not known.
JsonTree schema_of(const Layouts& layouts, const PlaceNode& node, const std::string& title, bool is_closed);

}  // namespace kcnvrt
