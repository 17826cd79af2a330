// shortage.h: allocations that failed are counted, so that a record can say whether one did.
#pragma once

#include "k_err.h"

namespace kcnvrt {

// What an allocation, or a call that does nothing but allocate, gave.
template <class Value>
Value* noted(Value* allocated) {
    if (allocated == nullptr) [[unlikely]]
        k_err_no_memory();
    return allocated;
}

}  // namespace kcnvrt
