// One function for each command. A Failure or ClosedPipe is the caller's to catch.
#pragma once

#include "commands/command_line.h"

namespace kcnvrt {

ExitStatus to_new(const Options& options);
ExitStatus to_old(const Options& options);
ExitStatus convert(const Options& options);
ExitStatus losses(const Options& options);
ExitStatus check(const Options& options);
ExitStatus explain(const Options& options);
ExitStatus section(const Options& options);
ExitStatus sections(const Options& options);
ExitStatus diff(const Options& options);
ExitStatus apply(const Options& options);
ExitStatus self_check(const Options& options);

}  // namespace kcnvrt
