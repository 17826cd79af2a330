// what_passes.h: what a source comes to when what is wrong with it may be left out.
#pragma once

#include "partial.h"
#include "trials/counter_check.h"

namespace kcnvrt::text {

// Takes out of `tree`, which was rejected, what the record complains of, and converts the rest. False when memory ends.
bool convert_rest(CounterCheck& check, const Way& way, json_t* tree, const k_err_t* record, KeptTexts& texts,
                  Part& part);

// Converts `source`, which is not modified, and the rest of a copy where it is rejected: `outcome` has that tree then,
// or none where nothing is left, and the messages of the source as it is. False when memory ends.
bool convert_what_passes(CounterCheck& check, const Way& way, json_t* source, Outcome& outcome);

}  // namespace kcnvrt::text
