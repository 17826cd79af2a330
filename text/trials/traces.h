// traces.h: values that can be told from all others, so that a result shows which of them it depends on.
#pragma once

#include "trials/counter_check.h"
#include "trials/leaves.h"

namespace kcnvrt::text {

// What stands for a leaf: a text with its number, or for an empty container the same kind with such a text inside.
// Null when memory ends.
Json trace_of(const json_t* leaf, size_t number);

// Converts `source` with a trace in the place of every leaf, and marks as used those whose trace is found again, or at
// whose place something is reported: most of those that are used, in one or a few conversions. `is_harmless` says that
// the traces of the others, all together, have changed nothing. False when memory ends.
bool mark_by_traces(CounterCheck& check, json_t* source, const Outcome& before, Leaves& leaves, bool& is_harmless);

}  // namespace kcnvrt::text
