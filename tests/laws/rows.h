// rows.h: rows that are data, read from a JSON file: an array of objects, each with "layout" ("old", "new" or both when it
// is left out), "places" (patterns) and what the row says of them.
#pragma once

#include <string>
#include <vector>

#include "pattern.h"
#include "tree.h"

enum class Side { kOld, kNew };

struct Row {
    Tree data;
    std::vector<Pattern> places;
    std::string text;         // the places as they are written, for messages
    mutable size_t seen = 0;  // counted by who applies the rows

    bool is_of(Side layout) const;
    bool matches(const Path& path) const;
    // Whether the document has what its places begin with.
    bool may_be_in(json_t* document) const;
    json_t* operator[](const char* name) const { return json_object_get(data.get(), name); }
    bool says(const char* name) const { return (*this)[name] != nullptr; }
};

std::vector<Row> load_rows(const char* file);
