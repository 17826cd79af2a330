// layout_commands.h: the commands that tell of the layouts themselves.
#pragma once

#include "commands/command_line.h"

namespace kcnvrt {

ExitStatus mapping(const Options& options);
ExitStatus schema(const Options& options);
ExitStatus example(const Options& options);

}  // namespace kcnvrt
