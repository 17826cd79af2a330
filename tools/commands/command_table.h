// The tool's commands, their operands and their options, as data: arguments are read and help pages are written by it.
#pragma once

#include <span>

#include "commands/command_line.h"

namespace kcnvrt {

// What a value is the name of, or what it says.
enum class Names { kNothing, kInput, kOutput, kSection, kCommand, kNumber, kWord, kPointer };

// Stores a value. Null, or what the value ought to have been.
using Store = const char* (*)(Options& options, const char* value);

struct Option {
    const char* name;   // without its dashes
    char letter;        // 0 where it has none
    const char* value;  // as the help page calls it, words with | between them; null where it takes none
    Names names;
    Store store;
    const char* purpose;
    const Option* needs = nullptr;
    const Option* excludes = nullptr;
};

using OptionList = std::span<const Option* const>;

// An argument without a dash.
struct Operand {
    const char* name;
    Names names;
    Store store;
    const char* purpose;
    bool is_required;
    bool repeats = false;  // only the last one can
};

struct Command {
    const char* name;
    const char* purpose;
    std::span<const Operand> operands;
    OptionList choice;  // exactly one of these has to be given; they are among the options
    OptionList options;
    const char* notes;  // paragraphs
    const char* example;
    ExitStatus (*run)(const Options& options);
};

std::span<const Command> all_commands();

// Null where there is none of this name.
const Command* find_command(std::string_view name);

// What may stand before the command.
OptionList general_options();

// These two are answered, and not stored.
extern const Option kHelp;
extern const Option kVersion;

}  // namespace kcnvrt
