// Reading JSON from files and standard input. What cannot be read or parsed throws a Failure.
#pragma once

#include <string>

#include "json.h"

namespace kcnvrt {

inline const std::string kStandardStream = "-";

// A whole configuration: an object.
Json read_configuration(const std::string& file);

// One section: an object or an array.
Json read_section(const std::string& file);

// Any JSON value.
Json read_value(const std::string& file);

}  // namespace kcnvrt
