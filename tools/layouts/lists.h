// lists.h: how entries are called, in numbered lists and where they have names of their own.
#pragma once

#include <string>
#include <vector>

#include "layouts.h"
#include "places.h"

namespace kcnvrt {

// In words; "" for a container that has no entries.
std::string entries_in_words(const LayoutContainer& container);

// Places with entries of which the same is said.
struct ListRow {
    std::vector<std::string> places;
    std::string entries;
};

// In the order of the description, the old layout first: those that one page of the mapping tells of.
std::vector<ListRow> lists_of_page(const Layouts& layouts, const std::string& page);

// Those that a pointer leads to.
std::vector<ListRow> lists_at(const Layouts& layouts, const Steps& names);

}  // namespace kcnvrt
