// mapping.h: which lines of the description somebody asks for.
#pragma once

#include <string>
#include <vector>

#include "layouts.h"
#include "places.h"

namespace kcnvrt {

// A page: what has one old section, or one new one where no old section has part in it.
struct MappingPage {
    std::string name;
    std::vector<const LayoutLine*> lines;
};

// In the order of the description.
std::vector<MappingPage> mapping_pages(const Layouts& layouts);

// The name of the page that tells of a place; "" for what is in no section.
std::string page_of_place(const Layouts& layouts, const std::string& place, Layout layout);

// The names of sections in either layout; a section that is converted alone under another name has that as well.
std::vector<std::string> section_names(const Layouts& layouts);
// Nothing for a name that is none of these.
std::vector<const LayoutLine*> lines_of_section(const Layouts& layouts, const std::string& name);

// What a pointer leads to.
struct AtPointer {
    std::vector<const LayoutLine*> lines;  // there, or below it
    bool is_exact = false;                 // it is the place of a line
    bool is_carried = false;               // it is unknown, and its object carries what it does not know
    bool is_in_section = false;            // its section at least is known
};
AtPointer lines_at(const Layouts& layouts, const Steps& names);
// The names that are known in the object that a pointer leads into.
std::vector<std::string> names_beside(const Layouts& layouts, const Steps& names);

}  // namespace kcnvrt
