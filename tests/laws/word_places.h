// word_places.h: where in a document the ordinary words of tables stand, as the document's own conversion finds it out.
//
// An ordinary word is one of the vocabulary that every room's tables are written in. What it makes of a value is the
// same wherever it stands, so that rows of data can speak of a word where they would otherwise list its places.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine.h"
#include "pattern.h"

// Whether tables know that word.
bool is_word(const std::string& name);
std::vector<std::string> word_names();

// Collects, while it exists, the words by which the members of a document cross; none before its conversion.
class WordPlaces : public Watcher {
public:
    WordPlaces(Side side, json_t* document);
    // The same of a copy of that document, which nobody converts.
    WordPlaces(const WordPlaces& places, json_t* copy);

    bool has(const Path& path, const std::string& word) const;
    // The members, there or absent, that cross by the word in the object at that path.
    std::vector<std::string> names_in(const Path& object, const std::string& word) const;

    void see(const RowRun& run) override;

private:
    using Words = std::set<std::string>;

    void adopt(const WordPlaces& places, json_t* document, json_t* copy);

    Side side_;
    json_t* document_;
    std::map<json_t*, std::map<std::string, Words>> objects_;  // by the names of their members
};
