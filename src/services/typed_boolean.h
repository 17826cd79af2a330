// typed_boolean.h: a boolean in both layouts, although the old one keeps most of them as texts.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

KCNVRT_FIELD_WORD(typed_boolean, ways::boolean_to_new, ways::boolean_to_new)

}  // namespace kcnvrt
