// deep_copy.h: what a conversion is measured against, its result copied value by value.
#pragma once

#include "frame/json.h"

namespace kcnvrt::bench {

inline Json deep_copy(json_t* value) {
    return Json{json_deep_copy(value)};
}

}  // namespace kcnvrt::bench
