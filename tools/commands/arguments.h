// Reading the command line's arguments, by the table of commands.
#pragma once

#include "commands/command_table.h"

namespace kcnvrt {

struct Request {
    const Command* command = nullptr;  // null where none is given
    const Option* question = nullptr;  // &kHelp or &kVersion where that is asked for, and nothing else counts
};

// Stores what the arguments say. Wrong usage throws a Failure.
Request read_arguments(int argc, char** argv, Options& options);

// `command`, which may be null, is the one whose help page tells more.
[[noreturn]] void fail_by_usage(const std::string& message, const Command* command);
[[noreturn]] void fail_by_unknown_command(const std::string& name);

}  // namespace kcnvrt
