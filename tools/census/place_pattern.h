// Places of many devices that are the same place.
#pragma once

#include <string>
#include <string_view>

namespace kcnvrt {

// A JSON Pointer into a configuration with * for each number, and for each name that a device gave: as `kcnvrt mapping`
// has it, but with * for the entries of every type.
std::string place_pattern(std::string_view pointer);

}  // namespace kcnvrt
