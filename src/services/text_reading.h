// text_reading.h: reading a text that holds JSON.
#pragma once

#include "frame/json.h"

namespace kcnvrt {

// What the text of an object or array says; null for any other value. Memory that runs out is noted.
Json read_text(json_t* text);

}  // namespace kcnvrt
