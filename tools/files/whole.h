// Whether a file that is there already is a result that need not be made again.
#pragma once

#include <string>

namespace kcnvrt {

// Whether `output` is newer than `input`, and a JSON object or array from its first byte to its last.
bool is_done(const std::string& input, const std::string& output);

}  // namespace kcnvrt
