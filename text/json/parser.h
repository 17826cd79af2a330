// parser.h: Jansson's parser, whose answer counts wherever the reader is not sure, and what its errors mean.
#pragma once

#include "json/reader.h"

namespace kcnvrt::text {

// As read(), and slower.
json_t* parse(std::string_view text, ReadOptions options, ReadError& error);

}  // namespace kcnvrt::text
