// The completion for zsh.

#include "pages.h"

namespace kcnvrt::pages {

namespace {

constexpr const char* kHead =
    "#compdef kcnvrt\n"
    "# Made of kcnvrt's table of commands.\n\n"
    "# Places of the layouts, section by section; those of explain are in a file, with entries of its own.\n"
    "_kcnvrt_places() {\n"
    "    local section=${${PREFIX#/}#Device/} cut=${1:-}\n"
    "    local -a names\n"
    "    if [[ $section = */* ]]; then\n"
    "        names=(${(f)\"$(kcnvrt mapping \"${section%%/*}\" 2> /dev/null | grep -o '/[^ ]*')\"})\n"
    "        [[ -z $cut ]] || names=(${names%%[*[|]*})\n"
    "    else\n"
    "        names=(${${${(f)\"$(kcnvrt sections 2> /dev/null)\"}/#old$'\\t'//}/#new$'\\t'//Device/})\n"
    "        names=(${^names}/)\n"
    "    fi\n"
    "    compadd -S '' -- ${(u)names}\n"
    "}\n\n"
    "# The names of the layout that is asked for, or of both; behind a slash places.\n"
    "_kcnvrt_sections() {\n"
    "    local layout='*'\n"
    "    [[ $PREFIX != /* ]] || { _kcnvrt_places; return }\n"
    "    [[ $words[1] != (schema|example) ]] || layout=${words[2]:-'*'}\n"
    "    (( ! $words[(I)--to-old] )) || layout=old\n"
    "    (( ! $words[(I)--to-new] )) || layout=new\n"
    "    local -a names=(${${(M)${(f)\"$(kcnvrt sections 2> /dev/null)\"}:#${~layout}$'\\t'*}#*$'\\t'})\n"
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
        case Offer::kPlaces:
            return "{_kcnvrt_places cut}";
        case Offer::kCommands:
            return "_kcnvrt_commands";
        default:
            return " ";
    }
}

// Of an option or an operand.
template <class Taker>
std::string action_with_words(const Taker& taker) {
    if (offer_of(taker) != Offer::kWords) return action(offer_of(taker));
    std::string words;
    for (const std::string& word : words_of(taker)) words += (words.empty() ? "(" : " ") + word;
    return words + ")";
}

std::string value_of(const Option& option) {
    return ":" + escaped(option.value, ":") + ":" + action_with_words(option);
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
        page += "        " + quoted(start + escaped(operand.name, ":") + ":" + action_with_words(operand)) + " \\\n";
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
