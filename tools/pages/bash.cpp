// The completion for bash: what the table says, as functions that answer what completion.bash asks.

#include "pages.h"

namespace kcnvrt::pages {

namespace {

std::string offer(Offer offer) {
    switch (offer) {
        case Offer::kFiles:
            return "files";
        case Offer::kSections:
            return "sections";
        case Offer::kPlaces:
            return "places";
        case Offer::kCommands:
            return "commands";
        default:
            return "nothing";
    }
}

// Of an option or an operand.
template <class Taker>
std::string offer_with_words(const Taker& taker) {
    if (offer_of(taker) != Offer::kWords) return offer(offer_of(taker));
    std::string words = "words";
    for (const std::string& word : words_of(taker)) words += " " + word;
    return words;
}

std::string names_of(OptionList options) {
    std::string names;
    for (const Option* option : options) {
        names.append(names.empty() ? "--" : " --").append(option->name);
        if (option->letter != 0) names.append(" -") += option->letter;
    }
    return names;
}

void append_values(std::string& page, const std::string& command, OptionList options) {
    for (const Option* option : options) {
        if (option->value == nullptr) continue;
        page += "        '" + command + " --" + option->name + "'";
        if (option->letter != 0) page += " | '" + command + " -" + option->letter + "'";
        page += ") echo '" + offer_with_words(*option) + "' ;;\n";
    }
}

void append_operands(std::string& page, const Command& command) {
    std::size_t place = 0;
    for (const Operand& operand : command.operands) {
        page += std::string("        '") + command.name + " " + (operand.repeats ? "'*" : std::to_string(place) + "'");
        page += ") echo '" + offer_with_words(operand) + "' ;;\n";
        ++place;
    }
}

}  // namespace

std::string bash_completion() {
    std::string page = "# shellcheck shell=bash\n# Made of kcnvrt's table of commands.\n\n_kcnvrt_commands='";
    for (const Command& command : all_commands()) page.append(" ").append(command.name);
    page += "'\n\n# The options of a command, \"\" being none.\n_kcnvrt_options() {\n    case $1 in\n";
    page += "        '') echo '" + names_of(general_options()) + "' ;;\n";
    for (const Command& command : all_commands())
        page += std::string("        ") + command.name + ") echo '" + names_of(command.options) + "' ;;\n";
    page += "    esac\n}\n\n# What to offer for the value of a command's option; nothing where it takes none.\n";
    page += "_kcnvrt_value() {\n    case \"$1 $2\" in\n";
    append_values(page, "", general_options());
    for (const Command& command : all_commands()) append_values(page, command.name, command.options);
    page += "    esac\n}\n\n# What to offer for a command's argument, counted from 0.\n";
    page += "_kcnvrt_operand() {\n    case \"$1 $2\" in\n";
    for (const Command& command : all_commands()) append_operands(page, command);
    return page + "    esac\n}\n\n";
}

}  // namespace kcnvrt::pages
