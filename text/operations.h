// operations.h: carrying out a request.
#pragma once

#include "basis/tree_memory.h"
#include "result.h"

namespace kcnvrt::text {

// Whatever happens goes into the result.
void run(const k_text_request_t* request, k_text_result_t& result);

// k_text_run for a program that this is linked into, and that takes back the memory of all trees as a whole: they are
// left as they are, but for those that were needed for a while only.
k_text_result_t* run_and_leave_trees(const k_text_request_t* request, const TreeMemory& memory);

}  // namespace kcnvrt::text
