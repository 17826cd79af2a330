// The completion for zsh.

#include "pages.h"

namespace kcnvrt::pages {

namespace {

constexpr const char* kHead =
    "#compdef kcnvrt\n"
    "# Made of kcnvrt's table of commands.\n\n"
    "_kcnvrt_sections() {\n"
    "    local -a names=(${${(f)\"$(kcnvrt sections 2> /dev/null)\"}#*$'\\t'})\n"
    "    compadd -M 'r:|=*' -- ${(u)names}\n"
    "}\n\n"
    "_kcnvrt_commands() {\n"
    "    local -a commands=(\n";
constexpr const char* kMiddle =
    "    )\n"
    "    _describe command commands\n"
    "}\n\n"
    "_kcnvrt() {\n"
    "    local state line context\n"
    "    typeset -A opt_args\n"
    "    _arguments -C \\\n";
constexpr const char* kArguments =
    "        '1:command:_kcnvrt_commands' '*::argument:->arguments'\n"
    "    [[ $state = arguments ]] || return\n"
    "    case $words[1] in\n";
constexpr const char* kTail =
    "    esac\n"
    "}\n\n"
    "_kcnvrt \"$@\"\n";

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char character : text) result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return result + "'";
}

std::string action(Offer offer) {
    switch (offer) {
        case Offer::kFiles:
            return "_files";
        case Offer::kSections:
            return "_kcnvrt_sections";
        case Offer::kCommands:
            return "_kcnvrt_commands";
        default:
            return " ";
    }
}

std::string value_of(const Option& option) {
    const std::string name = ":" + escaped(option.value, ":") + ":";
    if (offer_of(option) != Offer::kWords) return name + action(offer_of(option));
    std::string words;
    for (const std::string& word : words_of(option)) words += (words.empty() ? "(" : " ") + word;
    return name + words + ")";
}

// How _arguments is told of an option, by each of its names.
void append_option(std::string& page, const Option& option) {
    const std::string about = std::string("[") + escaped(option.purpose, "[]:") + "]";
    const std::string value = option.value == nullptr ? "" : value_of(option);
    const std::string name = std::string("--") + option.name;
    const std::string letter = option.letter == 0 ? "" : std::string("-") + option.letter;
    const std::string alone = "(" + name + (letter.empty() ? "" : " " + letter) + ")";
    page += "        " + quoted(alone + name + (value.empty() ? "" : "=") + about + value) + " \\\n";
    if (!letter.empty()) page += "        " + quoted(alone + letter + about + value) + " \\\n";
}

void append_command(std::string& page, const Command& command) {
    page.append("    ").append(command.name).append(")\n        _arguments \\\n");
    for (const Option* option : command.options) append_option(page, *option);
    for (const Operand& operand : command.operands) {
        const std::string start = operand.repeats ? "*:" : ":";
        page += "        " + quoted(start + escaped(operand.name, ":") + ":" + action(offer_of(operand))) + " \\\n";
    }
    page += "        && return\n        ;;\n";
}

}  // namespace

std::string zsh_completion() {
    std::string page = kHead;
    for (const Command& command : all_commands())
        page += "        " + quoted(escaped(command.name, ":") + ":" + command.purpose) + "\n";
    page += kMiddle;
    for (const Option* option : general_options()) append_option(page, *option);
    page += kArguments;
    for (const Command& command : all_commands()) append_command(page, command);
    return page + kTail;
}

}  // namespace kcnvrt::pages
