// Files that a run would both read and write, or write twice.
#pragma once

#include "commands/command_line.h"
#include "file_list.h"

namespace kcnvrt {

// Throws a Failure where a result, or one of the files that the user named besides, would take the place of a file that
// is read or of a result.
void refuse_conflicts(const FileList& files, const Options& options, const char* command);

}  // namespace kcnvrt
