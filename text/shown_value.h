// shown_value.h: values in the words of a result.
#pragma once

#include <string_view>

#include "owned.h"
#include "result.h"

namespace kcnvrt::text {

// A copy in which *** stands for each secret, and for each value inside one; the whole may be inside one. Null when
// memory ends.
Json masked_copy(const json_t* value, bool is_secret);

// The JSON text of the value at that place, on one line, with *** for each secret unless those are shown. Null when
// memory ends.
const char* shown_value(const json_t* value, std::string_view pointer, bool shows_secrets, KeptTexts& texts);

}  // namespace kcnvrt::text
