// The files of a run, before any is read or written.
#pragma once

#include "commands/command_line.h"

namespace kcnvrt {

// Throws a Failure where an input is missing, and where an output is also an input or another output.
void check_files(const Options& options, const char* command);

// The size of all that will be read, in bytes; 0 where it is not known.
std::size_t size_of_inputs(const std::vector<std::string>& files);

}  // namespace kcnvrt
