// What shells can offer for the values of options and for operands.

#include <algorithm>

#include "pages.h"

namespace kcnvrt::pages {

namespace {

Offer offer_of(Names names) {
    switch (names) {
        case Names::kInput:
        case Names::kOutput:
            return Offer::kFiles;
        case Names::kSection:
            return Offer::kSections;
        case Names::kPointer:
            return Offer::kPlaces;
        case Names::kCommand:
            return Offer::kCommands;
        default:
            return Offer::kNothing;
    }
}

}  // namespace

Offer offer_of(const Option& option) {
    if (option.names == Names::kWord && words_of(option).size() > 1) return Offer::kWords;
    return offer_of(option.names);
}

Offer offer_of(const Operand& operand) {
    if (operand.names == Names::kWord && words_of(operand).size() > 1) return Offer::kWords;
    return offer_of(operand.names);
}

namespace {

std::vector<std::string> words_in(const char* text) {
    std::vector<std::string> words(1);
    for (const char* at = text; *at != '\0'; ++at) {
        if (*at == '|') {
            words.emplace_back();
        } else {
            words.back() += *at;
        }
    }
    return words;
}

}  // namespace

std::vector<std::string> words_of(const Option& option) {
    return words_in(option.value);
}

std::vector<std::string> words_of(const Operand& operand) {
    return words_in(operand.name);
}

std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char character : text) {
        if (special.find(character) != std::string_view::npos) result += '\\';
        result += character;
    }
    return result;
}

}  // namespace kcnvrt::pages
