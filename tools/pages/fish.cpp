// The completion for fish.

#include "pages.h"

namespace kcnvrt::pages {

namespace {

constexpr const char* kHead =
    "# Made of kcnvrt's table of commands.\n\n"
    "# Places of the layouts, section by section.\n"
    "function __kcnvrt_places\n"
    "    set -l section (string replace -r '^/(Device/)?' '' -- (commandline -ct))\n"
    "    if string match -q '*/*' -- $section\n"
    "        kcnvrt mapping (string replace -r '/.*' '' -- $section) 2> /dev/null | string match -ar '/[^ ]*'\n"
    "    else\n"
    "        kcnvrt sections 2> /dev/null |\n"
    "            string replace -r '^old\\t(.*)' '/$1/' | string replace -r '^new\\t(.*)' '/Device/$1/'\n"
    "    end\n"
    "end\n\n"
    "# The names of the layout that is asked for, or of both; behind a slash places.\n"
    "function __kcnvrt_sections\n"
    "    set -l layout '.*'\n"
    "    set -l words (commandline -opc)\n"
    "    contains -- --to-old $words; and set layout old\n"
    "    contains -- --to-new $words; and set layout new\n"
    "    contains -- \"$words[2]\" schema example; and set -q words[3]; and set layout $words[3]\n"
    "    if string match -q '/*' -- (commandline -ct)\n"
    "        __kcnvrt_places\n"
    "    else\n"
    "        kcnvrt sections 2> /dev/null | string match -r \"^$layout\\t.*\" | string replace -r '.*\\t' ''\n"
    "    end\n"
    "end\n\n";

std::string quoted(const std::string& text) {
    return "'" + escaped(text, "\\'") + "'";
}

std::string command_names() {
    std::string names;
    for (const Command& command : all_commands()) names.append(names.empty() ? "" : " ").append(command.name);
    return names;
}

// How "complete" is told what to offer; files are offered unless it is told otherwise.
std::string arguments_of(Offer offer) {
    switch (offer) {
        case Offer::kFiles:
            return " -F";
        case Offer::kSections:
            return " -f -a '(__kcnvrt_sections)'";
        case Offer::kPlaces:
            return " -f -a '(__kcnvrt_places)'";
        case Offer::kCommands:
            return " -f -a " + quoted(command_names());
        default:
            return " -f";
    }
}

// Of an option or an operand.
template <class Taker>
std::string arguments_with_words(const Taker& taker) {
    if (offer_of(taker) != Offer::kWords) return arguments_of(offer_of(taker));
    std::string all;
    for (const std::string& word : words_of(taker)) all += (all.empty() ? "" : " ") + word;
    return " -f -a " + quoted(all);
}

void append_option(std::string& page, const std::string& start, const Option& option) {
    page += start + " -l " + option.name;
    if (option.letter != 0) page += std::string(" -s ") + option.letter;
    if (option.value != nullptr) page += " -r" + arguments_with_words(option);
    page += " -d " + quoted(option.purpose) + "\n";
}

}  // namespace

std::string fish_completion() {
    std::string page = kHead;
    const std::string first = "complete -c kcnvrt -n __fish_use_subcommand";
    page += first + " -f\n";
    for (const Command& command : all_commands())
        page += first + " -a " + command.name + " -d " + quoted(command.purpose) + "\n";
    for (const Option* option : general_options()) append_option(page, first, *option);
    for (const Command& command : all_commands()) {
        const std::string start =
            std::string("complete -c kcnvrt -n '__fish_seen_subcommand_from ") + command.name + "'";
        for (const Option* option : command.options) append_option(page, start, *option);
        if (command.operands.empty()) page += start + " -f\n";
        for (const Operand& operand : command.operands) page += start + arguments_with_words(operand) + "\n";
    }
    return page;
}

}  // namespace kcnvrt::pages
