// places.h: where in a text the problems are.
#pragma once

#include "source.h"

namespace kcnvrt::text {

// Gives every problem of a source that has a pointer its place in the text.
void find_places(const Source& source, k_text_result_t& result);

}  // namespace kcnvrt::text
