// asker.h: every place of a document asked what becomes of it, by putting other values there and converting.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "behaviour.h"
#include "conversion.h"
#include "names.h"

namespace describe {

// What is known of a place.
struct Finding {
    std::string place;
    std::string container;             // "object", "array", "list", "names"; "" for a leaf or what is carried whole
    bool is_whole = false;             // carried whole, whatever it is
    bool carries_others = false;       // an object whose other members are carried, a list whose length is
    std::string word;                  // of the table that has it; "" where none has
    std::vector<std::string> results;  // the places of the other layout that it decides
    bool is_name = false;              // is the name of a member of the other layout
    bool is_selector = false;          // decides so many that only their common container is named
    Tree behaviour;
    bool is_dropped = false;
    Tree example;
};

// A document of which each part is converted in silence.
struct Subject {
    Side side;
    uint8_t flags;
    json_t* document;
};

class Asker {
public:
    Asker(const Texts& texts, const std::vector<Row>& rows, PlaceNames& names)
        : texts_{texts}, rows_{rows}, names_{names} {}

    // Adds what a document tells to what is known of its layout, place by place in the order of the tables.
    void ask(const Subject& subject, std::vector<Finding>& findings);
    // Finds out which entries their types tell apart.
    void find_types(const Subject& subject);

private:
    struct Spot {
        Names names;
        std::string place;
    };

    Answer answer(const Subject& subject);
    // Without the member in every entry: what one lacks, another may give it.
    Answer answer_without_any(const Subject& subject, const std::string& place);
    // With another value there; null takes out what is there.
    Answer answer_with(const Subject& subject, const Names& names, json_t* value);
    Finding of_container(const Subject& subject, const Spot& spot);
    Finding of_leaf(const Subject& subject, const Spot& spot);
    bool is_carried_whole(const Subject& subject, const Spot& spot, Finding& finding);
    bool are_members_carried(const Subject& subject, const Names& names, const Names& result);
    std::vector<Tree> probes_of(const Subject& subject, const Spot& spot) const;
    std::string result_place(const Subject& subject, json_t* result, const Names& names) const;
    void keep(Finding finding, std::vector<Finding>& findings);

    const Texts& texts_;
    const std::vector<Row>& rows_;
    PlaceNames& names_;
    Answer base_;
    std::map<std::pair<Side, std::string>, size_t> asked_;
    std::set<std::pair<Side, std::string>> whole_;
};

}  // namespace describe
