// growing_text.h: a text put together piece by piece, owned.
#pragma once

#include <memory>

#include "k_str.h"

namespace kcnvrt {

struct FreeText {
    void operator()(k_string_t* text) const { string_free(text); }
};

// Null when memory ran out; adding to null does nothing.
using GrowingText = std::unique_ptr<k_string_t, FreeText>;

}  // namespace kcnvrt
