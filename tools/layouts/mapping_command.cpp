// kcnvrt mapping: for a person, and as JSON.
#include <unistd.h>

#include "commands/arguments.h"
#include "commands/nearest.h"
#include "disk/output.h"
#include "layout_commands.h"
#include "lists.h"
#include "mapping.h"
#include "mapping_page.h"
#include "print/terminal.h"
#include "sentences.h"

namespace kcnvrt {

namespace {

using enum Layout;
using Lines = std::vector<const LayoutLine*>;

// As JSON.

JsonTree texts(const std::vector<std::string>& list) {
    JsonTree array(json_array());
    for (const std::string& text : list) json_array_append_new(array.get(), json_string(text.c_str()));
    return array;
}

bool is_choice(json_t* value) {
    const std::string word = json_is_string(value) ? json_string_value(value) : "";
    return word == "a choice" || word == "another choice";
}

// What each direction gives for an absent value; null where neither gives a value of its own.
JsonTree defaults_of(const LayoutLine& line) {
    JsonTree defaults(json_object());
    for (const Layout from : {kOld, kNew}) {
        std::size_t index;
        json_t* said;
        json_array_foreach(line.behaviour(from), index, said) {
            const char* const type = json_string_value(json_array_get(json_object_get(said, "of"), 0));
            json_t* const gives = json_object_get(json_object_get(said, "gives"), "value");
            if (std::string(type) == "absent" && gives != nullptr && !is_choice(gives))
                json_object_set(defaults.get(), from == kOld ? "to_new" : "to_old", gives);
        }
    }
    return json_object_size(defaults.get()) == 0 ? JsonTree(json_null()) : std::move(defaults);
}

bool has_types(const std::vector<std::string>& places) {
    for (const std::string& place : places)
        if (place.find("/[") != std::string::npos) return true;
    return false;
}

JsonTree as_json(const LayoutLine& line) {
    JsonTree values(json_object());
    if (line.behaviour(kOld) != nullptr) json_object_set(values.get(), "to_new", line.behaviour(kOld));
    if (line.behaviour(kNew) != nullptr) json_object_set(values.get(), "to_old", line.behaviour(kNew));
    JsonTree object(json_pack("{s:o, s:o, s:s, s:o, s:o}", "old", texts(plain_places(line.places(kOld))).release(),
                              "new", texts(plain_places(line.places(kNew))).release(), "kind", line.kind().c_str(),
                              "values", values.release(), "default", defaults_of(line).release()));
    if (has_types(line.places(kOld)))
        json_object_set_new(object.get(), "old_by_type", texts(line.places(kOld)).release());
    if (line.has_flag()) json_object_set_new(object.get(), "flag", json_string("dsl-vlan"));
    return object;
}

void write_json(json_t* value, const Options& options) {
    const std::size_t blanks = static_cast<std::size_t>(options.indent.value_or(4));
    const std::string text = json_text(value, options.compact ? JSON_COMPACT : JSON_INDENT(blanks));
    write_text(options.output, text + "\n");
}

// For a person.

constexpr const char* kSentence = "         ";
constexpr const char* kFurther = "             ";

constexpr const char* kLegend =
    "\nIn messages KEY is the member's name in the result, TEXT and N are its value,\n"
    "NAME is that of its entry, TYPE its type or a number for that.\n";

// One for each place, and how the values cross.
std::string in_short(const LayoutLine& line) {
    const auto old_places = line.places(kOld);
    const auto new_places = line.places(kNew);
    std::string text;
    for (const std::string& place : old_places) text += place + "\n";
    if (old_places.empty()) text += "nothing old\n";
    const char* const arrow = line.behaviour(kNew) == nullptr   ? "    -> "
                              : line.behaviour(kOld) == nullptr ? "    <- "
                                                                : "   <-> ";
    for (const std::string& place : new_places) text += arrow + place + "\n";
    if (new_places.empty()) text += std::string(arrow) + "nothing\n";
    text += "       " + line.kind() + (line.has_flag() ? ", with --dsl-vlan" : "") + "\n";
    return text;
}

// A sentence in lines that fit, the second and further ones further in. A word that fits in none has one of its own.
std::string in_lines(const std::string& sentence, std::size_t columns) {
    std::string text;
    std::string line = kSentence;
    for (std::size_t at = 0; at < sentence.size();) {
        const std::size_t end = std::min(sentence.find(' ', at), sentence.size());
        const std::string word = sentence.substr(at, end - at);
        const bool is_first = line.back() == ' ';
        if (!is_first && columns_of(line) + 1 + columns_of(word) > columns) {
            text += line + "\n";
            line = kFurther + word;
        } else {
            line += (is_first ? "" : " ") + word;
        }
        at = end + 1;
    }
    return text + line + "\n";
}

// A terminal has an end of its lines; a program that reads them wants whole ones.
std::size_t columns_for(const Options& options) {
    const bool is_terminal = options.output == kStandardStream && isatty(STDOUT_FILENO) != 0;
    return is_terminal ? terminal_columns() : std::string::npos;
}

std::string in_full(const LayoutLine& line, std::size_t columns) {
    std::string text = in_short(line);
    for (const Layout from : {kOld, kNew}) {
        if (line.behaviour(from) == nullptr) continue;
        text += from == kOld ? "       to new:\n" : "       to old:\n";
        for (const std::string& sentence : sentences_of(line.behaviour(from))) text += in_lines(sentence, columns);
    }
    return text;
}

std::string in_words(const ListRow& row) {
    std::string text;
    for (const std::string& place : row.places) text += place + "\n";
    return text + "       entries " + row.entries + "\n";
}

std::string overview(const Layouts& layouts) {
    std::string text =
        "Sections, and how many places of theirs are described. `kcnvrt mapping SECTION` shows them.\n\n";
    for (const MappingPage& page : mapping_pages(layouts)) {
        std::string row = "  " + page.name;
        row.append(row.size() < 24 ? 24 - row.size() : 1, ' ');
        text += row + std::to_string(page.lines.size()) + "\n";
    }
    return text;
}

// What somebody asks for.

// A pointer without its first slash is no section.
[[noreturn]] void fail_by_unknown_section(const Layouts& layouts, const std::string& name) {
    const std::vector<std::string> known = section_names(layouts);
    const std::vector<std::string_view> names(known.begin(), known.end());
    Steps steps;
    const bool is_place = read_pointer("/" + name, steps) && !lines_at(layouts, steps).lines.empty();
    fail_by_usage("there is no section \"" + name + "\"" +
                      (is_place ? ", did you mean \"/" + name + "\"?" : suggestion(name, names)),
                  find_command("mapping"));
}

Steps names_in(const std::string& pointer) {
    Steps names;
    read_pointer(pointer, names);
    return names;
}

// The pointer up to the outermost name that is not known.
std::string known_but_for_last(const Layouts& layouts, const std::string& pointer) {
    std::string unknown = pointer;
    for (std::string above = pointer; above.find('/', 1) != std::string::npos; unknown = above) {
        above.resize(above.rfind('/'));
        if (!lines_at(layouts, names_in(above)).lines.empty()) break;
    }
    return unknown;
}

// ", did you mean" the nearest of the names that are known there, with the way there.
std::string nearest_place(const Layouts& layouts, const std::string& pointer) {
    const std::string unknown = known_but_for_last(layouts, pointer);
    const Steps names = names_in(unknown);
    if (names.empty()) return "";
    const std::vector<std::string> known = names_beside(layouts, names);
    const std::string name = nearest(names.back(), std::vector<std::string_view>(known.begin(), known.end()));
    return name.empty() ? "" : ", did you mean \"" + unknown.substr(0, unknown.rfind('/') + 1) + name + "\"?";
}

[[noreturn]] void fail_by_unknown_pointer(const Layouts& layouts, const std::string& pointer) {
    fail_by_usage("there is no place \"" + pointer + "\"" + nearest_place(layouts, pointer), find_command("mapping"));
}

// Nothing of it is in the description: what becomes of it all the same.
ExitStatus tell_of_unknown(const AtPointer& found, const std::string& hint, const Options& options) {
    const std::string& pointer = options.asked;
    if (options.as_json) {
        const bool is_new = pointer.starts_with("/Device");
        const JsonTree line(json_pack("[{s:o, s:o, s:s, s:{}, s:n}]", "old",
                                      texts(is_new ? std::vector<std::string>{} : std::vector{pointer}).release(),
                                      "new",
                                      texts(is_new ? std::vector{pointer} : std::vector<std::string>{}).release(),
                                      "kind", found.is_carried ? "carried" : "dropped", "values", "default"));
        write_json(line.get(), options);
    } else {
        write_text(options.output,
                   pointer +
                       (found.is_carried ? "\n       is not known: its object carries every member, as it is"
                                         : "\n       is not known: it would be dropped without a message") +
                       hint + "\n");
    }
    return kConverted;
}

struct Asked {
    std::string title;
    Lines lines;
    bool is_exact = false;
    std::vector<ListRow> lists{};  // that it is itself
};

std::string text_of(const Asked& asked, const Options& options) {
    std::string text;
    for (const ListRow& row : asked.lists) text += in_words(row);
    for (const LayoutLine* line : asked.lines)
        text += (text.empty() ? "" : "\n") + (asked.is_exact ? in_full(*line, columns_for(options)) : in_short(*line));
    if (text.find("\"KEY\"") != std::string::npos) text += kLegend;
    return text;
}

ExitStatus tell(const Layouts& layouts, const Asked& asked, const Options& options) {
    if (options.as_json) {
        JsonTree array(json_array());
        for (const LayoutLine* line : asked.lines) json_array_append_new(array.get(), as_json(*line).release());
        write_json(array.get(), options);
    } else {
        write_text(options.output,
                   options.as_markdown ? markdown_page(layouts, asked.title, asked.lines) : text_of(asked, options));
    }
    return kConverted;
}

Lines all(const Layouts& layouts) {
    Lines lines;
    for (const LayoutLine& line : layouts.lines()) lines.push_back(&line);
    return lines;
}

// One page has what another section shares with it.
Lines lines_of_page(const Layouts& layouts, const std::string& name) {
    for (MappingPage& page : mapping_pages(layouts))
        if (page.name == name) return page.lines;
    return lines_of_section(layouts, name);
}

}  // namespace

ExitStatus mapping(const Options& options) {
    const Layouts layouts;
    const std::string& name = options.asked;
    if (name.empty()) {
        if (options.as_json) return tell(layouts, {"", all(layouts)}, options);
        write_text(options.output, options.as_markdown ? markdown_index(layouts) : overview(layouts));
        return kConverted;
    }
    if (name.front() != '/') {
        const Lines lines = options.as_markdown ? lines_of_page(layouts, name) : lines_of_section(layouts, name);
        if (lines.empty()) fail_by_unknown_section(layouts, name);
        return tell(layouts, {name, lines}, options);
    }
    Steps names;
    if (!read_pointer(name, names)) fail_by_usage("\"" + name + "\" is no JSON Pointer", find_command("mapping"));
    const AtPointer found = lines_at(layouts, names);
    if (!found.lines.empty())
        return tell(layouts, {name, found.lines, found.is_exact, lists_at(layouts, names)}, options);
    if (!found.is_in_section) fail_by_unknown_pointer(layouts, name);
    return tell_of_unknown(found, nearest_place(layouts, name), options);
}

}  // namespace kcnvrt
