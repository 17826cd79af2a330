// Converting many files into a folder.
#pragma once

#include "command_line.h"

namespace kcnvrt {

// Whether that is asked for. Throws a Failure where the arguments are many and no folder is named.
bool are_many_files(const Options& options, const char* command);

// Each file by the operation of the text layer, under its own name in the folder.
ExitStatus convert_files(uint32_t operation, const Options& options, const char* command);

}  // namespace kcnvrt
