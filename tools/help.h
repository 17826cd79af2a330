// Help pages, made of the table of commands, 80 columns wide.
#pragma once

#include "command_table.h"

namespace kcnvrt {

// Of the tool where `command` is null.
std::string help_page(const Command* command);

// The command that prints one.
ExitStatus help(const Options& options);

}  // namespace kcnvrt
