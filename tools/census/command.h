// The census before a migration.
#pragma once

#include "command_line.h"

namespace kcnvrt {

// The command.
ExitStatus census(const Options& options);

}  // namespace kcnvrt
