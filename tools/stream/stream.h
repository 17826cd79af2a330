// Converting newline-delimited JSON.
#pragma once

#include "commands/command_line.h"
#include "ordered_run.h"

namespace kcnvrt {

// Converts the records of all inputs.
ExitStatus convert_records(const Options& options, OrderedRun& run);

// The command.
ExitStatus stream(const Options& options);

}  // namespace kcnvrt
