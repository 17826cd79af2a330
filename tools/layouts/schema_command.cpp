// kcnvrt schema and kcnvrt example: a layout for an editor, and by example.
#include "commands/arguments.h"
#include "commands/nearest.h"
#include "disk/output.h"
#include "layout_commands.h"
#include "mapping.h"
#include "schema.h"
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
        if (find_section(root, name) != nullptr) known.push_back(name);
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

}  // namespace

ExitStatus schema(const Options& options) {
    const Layouts layouts;
    const auto root = place_tree(layouts, layout_of(options, "schema"));
    const PlaceNode* const node = options.asked.empty() ? root.get() : find_section(*root, options.asked);
    if (node == nullptr) fail_by_unknown_section(layouts, *root, options, "schema");
    const std::string what = options.asked.empty() ? "configuration" : "section " + options.asked;
    const JsonTree made =
        schema_of(layouts, *node, "A gateway's " + what + ", " + options.layout + " layout", options.closed);
    write_json(made.get(), options);
    return kConverted;
}

namespace {

// The outermost member of that name; null where there is none.
json_t* find_member(json_t* document, const std::string& name) {
    std::vector<json_t*> level{document};
    for (int depth = 0; depth < 3; ++depth) {
        std::vector<json_t*> next;
        for (json_t* object : level) {
            if (json_t* const found = json_object_get(object, name.c_str())) return found;
            const char* member;
            json_t* inner;
            json_object_foreach(object, member, inner) next.push_back(inner);
        }
        level = std::move(next);
    }
    return nullptr;
}

}  // namespace

ExitStatus example(const Options& options) {
    const Layouts layouts;
    const Layout layout = layout_of(options, "example");
    std::vector<json_t*> forms;
    for (const bool is_other : {false, true}) {
        json_t* const document = layouts.example(layout, is_other);
        json_t* const form = options.asked.empty() ? document : find_member(document, options.asked);
        if (form != nullptr) forms.push_back(form);
    }
    if (forms.empty()) fail_by_unknown_section(layouts, *place_tree(layouts, layout), options, "example");
    if (!options.all) {
        write_json(forms.front(), options);
        return kConverted;
    }
    const JsonTree array(json_array());
    for (json_t* form : forms) json_array_append(array.get(), form);
    write_json(array.get(), options);
    return kConverted;
}

}  // namespace kcnvrt
