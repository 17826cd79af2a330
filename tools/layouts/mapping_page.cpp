#include "mapping_page.h"

#include "lists.h"
#include "mapping.h"
#include "sentences.h"

namespace kcnvrt {

namespace {

using enum Layout;

constexpr const char* kHowToRead =
    "# The two layouts\n\n"
    "Which places of the old and the new layout become each other, and what becomes of their values. All of it was "
    "found\n"
    "out by asking the conversion (`tools/describe`), and `kcnvrt mapping` tells the same. Written by\n"
    "`scripts/layouts.sh`; a test compares it, and another takes every line at its word.\n\n"
    "## How to read a page\n\n"
    "A place is a JSON Pointer with these besides names:\n\n"
    "| | |\n|---|---|\n"
    "| `*` | the number, position or own name of an entry |\n"
    "| `[ppp\\|ip]` | an entry whose \"type\" is one of these |\n"
    "| `a\\|b` | either name |\n"
    "| `**` | the value and everything below it, which is carried whole |\n\n"
    "| kind | |\n|---|---|\n"
    "| carried | any value stays as it is |\n"
    "| dropped | no value arrives |\n"
    "| name | becomes the name of a member or of an entry |\n"
    "| chooses | decides what becomes of the section or entry that it is in |\n"
    "| code | one of a few values, or other ones in each layout |\n"
    "| text, integer, boolean, ... | the type of what is taken, where the conversion is code of its own |\n"
    "| other words | those of the tables (`src/frame/field.h`) |\n\n"
    "A column for a direction says *carried* or *dropped*, or has the number of what is said below the table; it is "
    "empty\n"
    "where another line says it. In messages KEY stands for the member's name in the result, TEXT and N for its value, "
    "NAME\n"
    "for the name of its entry, TYPE for its type or Jansson's number of that. \"Becomes what NAME gives\" is said "
    "where\n"
    "another member decides, by its name or its place. \"Becomes something else\" has a few samples; what was not\n"
    "asked is not told.\n"
    "*Lists* says which names the entries of a list may have, and whether they are kept.\n\n"
    "## Sections\n\n"
    "| old section | lines |\n|---|---|\n";

std::string escaped(const std::string& text) {
    std::string plain;
    for (const char character : text) {
        if (character == '|') plain += '\\';
        plain += character;
    }
    return plain;
}

std::string code(const std::string& text) {
    return "`" + escaped(text) + "`";
}

std::string cell(const std::vector<std::string>& places) {
    std::string text;
    for (const std::string& place : places) text += (text.empty() ? "" : "<br>") + code(place);
    return text.empty() ? "nothing" : text;
}

// How a direction is told: a word where there is nothing more to say, else the number of what is said below.
std::string told(const LayoutLine& line, Layout from, std::vector<json_t*>& below) {
    json_t* const behaviour = line.behaviour(from);
    if (behaviour == nullptr) return "";
    const auto sentences = sentences_of(behaviour);
    if (sentences == std::vector<std::string>{"any value stays the same"}) return "carried";
    if (sentences == std::vector<std::string>{"any value is dropped"}) return "dropped";
    std::size_t number = 0;
    while (number < below.size() && below[number] != behaviour) ++number;
    if (number == below.size()) below.push_back(behaviour);
    const std::string name = std::to_string(number + 1);
    return "[" + name + "](#" + name + ")";
}

std::string markdown_lists(const std::vector<ListRow>& rows) {
    if (rows.empty()) return "";
    std::string text = "\n## Lists\n\n| list | entries |\n|---|---|\n";
    for (const ListRow& row : rows) text += "| " + cell(row.places) + " | " + escaped(row.entries) + " |\n";
    return text;
}

}  // namespace

std::string markdown_page(const Layouts& layouts, const std::string& name,
                          const std::vector<const LayoutLine*>& lines) {
    std::string page = "# " + name + "\n\nWritten by `scripts/layouts.sh`; [how to read it](README.md).\n\n";
    page += "| old → new | kind | to new | to old |\n|---|---|---|---|\n";
    std::vector<json_t*> below;
    for (const LayoutLine* line : lines) {
        page += "| " + cell(line->places(kOld)) + "<br>→ " + cell(line->places(kNew)) + " | " + line->kind();
        page += line->has_flag() ? ", with `--dsl-vlan`" : "";
        for (const Layout from : {kOld, kNew}) page += " | " + told(*line, from, below);
        page += " |\n";
    }
    page += markdown_lists(lists_of_page(layouts, name));
    for (std::size_t number = 0; number < below.size(); ++number) {
        page += "\n## " + std::to_string(number + 1) + "\n\n";
        for (const std::string& sentence : sentences_of(below[number])) page += "- " + sentence + "\n";
    }
    return page;
}

std::string markdown_index(const Layouts& layouts) {
    std::string page = kHowToRead;
    for (const MappingPage& one : mapping_pages(layouts))
        page += "| [" + one.name + "](" + one.name + ".md) | " + std::to_string(one.lines.size()) + " |\n";
    return page;
}

}  // namespace kcnvrt
