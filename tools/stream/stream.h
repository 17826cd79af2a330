// The command that converts newline-delimited JSON.
#pragma once

#include "command_line.h"

namespace kcnvrt {

ExitStatus stream(const Options& options);

}  // namespace kcnvrt
