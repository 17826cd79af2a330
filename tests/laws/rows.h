// rows.h: rows that are data, read from a JSON file: an array of objects, each with "layout" ("old", "new" or both when
// it is left out), "places" (patterns) or "words" (every place that a table has them for), and what the row says of
// them.
#pragma once

#include <string>
#include <vector>

#include "pattern.h"
#include "side.h"
#include "tree.h"

class WordPlaces;

struct Row {
    Tree data;
    std::vector<Pattern> places;
    std::vector<std::string> words;
    std::string text;         // the places as they are written, or the words, for messages
    mutable size_t seen = 0;  // counted by who applies the rows

    bool is_of(Side layout) const;
    // Whether it speaks of that place, and of which members, there or absent, of the object there.
    bool matches(const Path& path) const;
    std::vector<std::string> names_in(const Path& object) const;
    // The same with the places where its words stand in the document that the path leads through.
    bool matches(const Path& path, const WordPlaces& word_places) const;
    std::vector<std::string> names_in(const Path& object, const WordPlaces& word_places) const;
    // Whether the document has what its places begin with.
    bool may_be_in(json_t* document) const;
    json_t* operator[](const char* name) const { return json_object_get(data.get(), name); }
    bool says(const char* name) const { return (*this)[name] != nullptr; }
};

std::vector<Row> load_rows(const char* file);
