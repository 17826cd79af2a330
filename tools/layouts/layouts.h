// layouts.h: the description of both layouts, as its lines say it (see docs/mapping).
#pragma once

#include <jansson.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kcnvrt {

struct ReleaseJson {
    void operator()(json_t* value) const { json_decref(value); }
};
using JsonTree = std::unique_ptr<json_t, ReleaseJson>;

enum class Layout { kOld, kNew };

inline const char* name_of(Layout layout) {
    return layout == Layout::kOld ? "old" : "new";
}

// One line: places of both layouts that become each other. Borrowed.
class LayoutLine {
public:
    LayoutLine(json_t* line, json_t* behaviours) : line_{line}, behaviours_{behaviours} {}

    std::vector<std::string> places(Layout layout) const;
    std::string kind() const { return json_string_value(json_object_get(line_, "kind")); }
    // Whether it holds with --dsl-vlan only.
    bool has_flag() const { return json_object_get(line_, "flag") != nullptr; }
    // What becomes of the values of its places in that layout; null where another line says it.
    json_t* behaviour(Layout from) const;
    int number(Layout from) const;  // of that behaviour; -1 for none

private:
    json_t* line_;
    json_t* behaviours_;
};

// A container that is not carried whole.
struct LayoutContainer {
    std::string place;
    std::string is;  // "object", "array", "list" (numbered), "names" (members under names of their own)
    bool carries_others;
    bool has_flag;    // it is read with --dsl-vlan only
    json_t* asked;    // its behaviour, or null
    json_t* entries;  // of a numbered list what names they have (tools/describe), or null for any number from 1
};

class Layouts {
public:
    Layouts();

    const std::vector<LayoutLine>& lines() const { return lines_; }
    // The expression for a kind of text, in the dialect of JSON Schema.
    std::string pattern(const std::string& texts) const;
    std::vector<LayoutContainer> containers(Layout layout) const;
    // A complete configuration; the other one is of a device of another generation, with DSL VLANs.
    json_t* example(Layout layout, bool is_other) const;

private:
    JsonTree root_;
    std::vector<LayoutLine> lines_;
};

}  // namespace kcnvrt
