// parts.h: a document in parts that can be asked alone, which is quicker than asking the whole.
#pragma once

#include "sections.h"

namespace describe {

// Every section, and of the interfaces each service of each by itself.
std::vector<Section> parts_of(Side side, json_t* document);

}  // namespace describe
