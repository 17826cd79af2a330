// kcnvrt schema and kcnvrt example: a layout for an editor, and by example.
#include <algorithm>

#include "commands/arguments.h"
#include "commands/nearest.h"
#include "disk/output.h"
#include "layout_commands.h"
#include "mapping.h"
#include "places.h"
#include "schema.h"
#include "section_place.h"
#include "sentences.h"

namespace kcnvrt {

namespace {

Layout layout_of(const Options& options, const char* command) {
    if (options.layout == "old") return Layout::kOld;
    if (options.layout == "new") return Layout::kNew;
    fail_by_usage("\"" + options.layout + "\" is no layout, but old and new are", find_command(command));
}

[[noreturn]] void fail_by_unknown_section(const Layouts& layouts, const PlaceNode& root, const Options& options,
                                          const char* command) {
    std::vector<std::string> known;
    for (const std::string& name : section_names(layouts))
        if (place_of_section(root, layout_of(options, command), name)) known.push_back(name);
    const std::vector<std::string_view> names(known.begin(), known.end());
    fail_by_usage(
        "there is no " + options.layout + " section \"" + options.asked + "\"" + suggestion(options.asked, names),
        find_command(command));
}

void write_json(json_t* value, const Options& options) {
    const auto blanks = static_cast<std::size_t>(options.indent.value_or(4));
    write_text(options.output,
               json_text(value, (options.compact ? JSON_COMPACT : JSON_INDENT(blanks)) | JSON_ENCODE_ANY) + "\n");
}

struct Asked {
    std::unique_ptr<PlaceNode> root;
    SectionPlace section;
};

Asked what_is_asked(const Layouts& layouts, const Options& options, const char* command) {
    const Layout layout = layout_of(options, command);
    Asked asked{place_tree(layouts, layout), {}};
    if (options.asked.empty()) return asked;
    const auto section = place_of_section(*asked.root, layout, options.asked);
    if (!section) fail_by_unknown_section(layouts, *asked.root, options, command);
    asked.section = *section;
    return asked;
}

void keep_members(PlaceNode& node, const std::vector<std::string>& names) {
    if (names.empty()) return;
    std::erase_if(node.inner, [&](const auto& member) {
        return std::find(names.begin(), names.end(), member->step) == names.end();
    });
}

}  // namespace

ExitStatus schema(const Options& options) {
    const Layouts layouts;
    const Asked asked = what_is_asked(layouts, options, "schema");
    PlaceNode* const node = find_place(*asked.root, asked.section.place);
    keep_members(*node, asked.section.members);
    const std::string what = options.asked.empty() ? "configuration" : "section " + options.asked;
    const JsonTree made =
        schema_of(layouts, *node, "A gateway's " + what + ", " + options.layout + " layout", options.closed);
    write_json(made.get(), options);
    return kConverted;
}

namespace {

json_t* value_at(json_t* document, const std::string& place) {
    for (const std::string& name : steps_of(place)) document = json_object_get(document, name.c_str());
    return document;
}

// Nothing where the example does not have it.
JsonTree form_of(json_t* example, const SectionPlace& section) {
    json_t* const value = value_at(example, section.place);
    if (section.members.empty() || value == nullptr) return JsonTree(json_incref(value));
    JsonTree part(json_object());
    for (const std::string& name : section.members)
        json_object_set(part.get(), name.c_str(), json_object_get(value, name.c_str()));
    return part;
}

}  // namespace

ExitStatus example(const Options& options) {
    const Layouts layouts;
    const Layout layout = layout_of(options, "example");
    const Asked asked = what_is_asked(layouts, options, "example");
    const JsonTree forms(json_array());
    for (const bool is_other : {false, true})
        if (const JsonTree form = form_of(layouts.example(layout, is_other), asked.section))
            json_array_append(forms.get(), form.get());
    write_json(options.all ? forms.get() : json_array_get(forms.get(), 0), options);
    return kConverted;
}

}  // namespace kcnvrt
