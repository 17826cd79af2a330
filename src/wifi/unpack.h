// unpack.h: reading by one of Jansson's formats.
#pragma once

#include <jansson.h>

namespace kcnvrt {

// 0, or -1 and what is wrong in `error`. Reading stops at the first field that does not fit; those before it are read.
int unpack(json_t* source, json_error_t& error, const char* format, ...);

}  // namespace kcnvrt
