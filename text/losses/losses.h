// losses.h: what of a configuration the other layout will not hold.
#pragma once

#include "source.h"
#include "trials/counter_check.h"

namespace kcnvrt::text {

// Puts into the result, in the order of the text, what does not come back as it was when `root`, the tree of `text`, is
// converted as the check goes, and back. Of a text that is rejected the part is taken that can be converted; with
// `notes_part`, what was taken out is noted. False when nothing can be converted, or memory ends.
bool find_losses(const Source& text, json_t* root, CounterCheck& check, bool notes_part, k_text_result_t& result);

}  // namespace kcnvrt::text
