// Values that are too long for a line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kcnvrt {

// A UTF-8 text in at most so many columns: what is longer by its beginning and its end, with "..." between them.
std::string shortened(std::string_view text, std::size_t columns);

}  // namespace kcnvrt
