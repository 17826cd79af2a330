// told_losses.h: the list of losses that the text layer gives of a document, against what did not come back.
#pragma once

#include <string>

#include "side.h"
#include "tree.h"

// What the list lacks or has too much for a document of which `back` comes back; "" when it tells all that differs and
// nothing else.
std::string defect_of_told_losses(Side side, json_t* document, bool is_dsl, json_t* back);
