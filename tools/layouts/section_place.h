// section_place.h: where in a configuration of a layout a section of that name stands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "layouts.h"
#include "place_tree.h"

namespace kcnvrt {

struct SectionPlace {
    std::string place;                 // a JSON Pointer
    std::vector<std::string> members;  // the ones that are the section; none where all are
};

// Of a section by its name in a configuration, or by the one that it is converted alone under. Nothing for no section.
std::optional<SectionPlace> place_of_section(const PlaceNode& root, Layout layout, const std::string& name);

}  // namespace kcnvrt
