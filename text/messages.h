// messages.h: the library's messages as problems.
#pragma once

#include "source.h"

namespace kcnvrt::text {

// One problem for each message of the result's record.
void add_messages(const Source& source, k_text_result_t& result);

}  // namespace kcnvrt::text
