// names.h: places of a layout by the names that lead there: what is a number, a position or a name of somebody's own is
// "*", and an entry whose "type" says which members it has is "[type]".
//
//     /ifaces/[ethernet]/services/[ppp]/mtu
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "rows.h"
#include "tree.h"

namespace describe {

using Names = std::vector<std::string>;

// Along names and positions; null where nothing is.
json_t* at(json_t* root, const Names& names);
Path path_to(json_t* root, const Names& names);
// The document with another value in that place; null takes out what is there. What is beside the way there is shared,
// so that nothing that a conversion has shared changes.
Tree with_value(json_t* document, const Names& names, json_t* value);
Names names_of(const std::string& pointer);
std::string pointer_of(const Names& names);

class PlaceNames {
public:
    // Rows that say "keyed" tell which objects are keyed by names of their own.
    explicit PlaceNames(const std::vector<Row>& rows) : rows_{rows} {}

    // From now on the entries of that container are told by their types.
    void tell_by_type(Side side, const std::string& container) { typed_.insert({side, container}); }

    // In the first of the documents that has a value there.
    std::string place(Side side, const std::vector<json_t*>& documents, const Names& names) const;
    // One step further: `path` leads to the place, and the next step into it.
    std::string inside(Side side, const std::string& place, const Path& path, const Step& next) const;
    // What the value is a container of: "object", "array", "list" (numbered), "names"; "" for a leaf.
    const char* container(Side side, const std::string& place, const Path& path) const;

private:
    bool is_keyed(Side side, const std::string& place, const Path& path) const;
    std::string step(Side side, const std::string& container, const Path& path, const Step& step) const;

    const std::vector<Row>& rows_;
    std::set<std::pair<Side, std::string>> typed_;
    mutable std::map<std::pair<Side, std::string>, bool> keyed_;
};

// With "*" for every type.
std::string without_types(const std::string& place);

}  // namespace describe
