// pages.h: manual pages and completions, made of the table of commands as the help pages are.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/command_table.h"

namespace kcnvrt::pages {

// In the language of manual pages, section 1: of one command, or of the tool.
std::string manual_of(const Command& command);
std::string manual_of_tool();

std::string bash_completion();
std::string zsh_completion();
std::string fish_completion();

// What a shell can offer for a value.
enum class Offer { kNothing, kFiles, kWords, kSections, kPlaces, kCommands };
Offer offer_of(const Option& option);
Offer offer_of(const Operand& operand);

// The words of a value that is one of some: "text|json".
std::vector<std::string> words_of(const Option& option);
std::vector<std::string> words_of(const Operand& operand);

// The text with each character of `special` behind a backslash.
std::string escaped(std::string_view text, std::string_view special);

}  // namespace kcnvrt::pages
