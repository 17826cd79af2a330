// The census before a migration.
#pragma once

#include "commands/command_line.h"

namespace kcnvrt {

// The command.
ExitStatus census(const Options& options);

}  // namespace kcnvrt
