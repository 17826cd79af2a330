// messages.h: the library's messages as problems.
#pragma once

#include "source.h"

namespace kcnvrt::text {

// One problem for each line that the result's record kept, and one for each message, with its place in the source, whose
// tree is `root`. `printer` is the pointer of what prints lines.
void add_messages(const Source& source, json_t* root, const char* printer, k_text_result_t& result);

}  // namespace kcnvrt::text
