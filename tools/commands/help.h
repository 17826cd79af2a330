// Help pages, made of the table of commands, 80 columns wide.
#pragma once

#include <utility>
#include <vector>

#include "commands/command_table.h"

namespace kcnvrt {

// A name, and what is said of it.
using Row = std::pair<std::string, std::string>;
using Rows = std::vector<Row>;

// What pages say of the tool. Lines of the notes are paragraphs.
extern const char* const kPurpose;
extern const char* const kNotes;
extern const char* const kExample;
Rows exit_statuses();
std::string usage_of(const Command& command);

// Of the tool where `command` is null.
std::string help_page(const Command* command);

// The command that prints one.
ExitStatus help(const Options& options);

}  // namespace kcnvrt
