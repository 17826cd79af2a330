// mapping_page.h: the mapping as the pages of docs/mapping.
#pragma once

#include <string>
#include <vector>

#include "layouts.h"

namespace kcnvrt {

// The page with that name; the lines are borrowed.
std::string markdown_page(const Layouts& layouts, const std::string& name, const std::vector<const LayoutLine*>& lines);

// How to read the pages, and which there are.
std::string markdown_index(const Layouts& layouts);

}  // namespace kcnvrt
