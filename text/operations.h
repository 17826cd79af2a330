// operations.h: carrying out a request.
#pragma once

#include "result.h"

namespace kcnvrt::text {

// Whatever happens goes into the result.
void run(const k_text_request_t* request, k_text_result_t& result);

}  // namespace kcnvrt::text
