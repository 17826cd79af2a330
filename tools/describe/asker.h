// asker.h: every place of a document asked what becomes of it, by putting other values there and converting.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "conversion.h"
#include "finding.h"
#include "names.h"
#include "texts.h"

namespace describe {

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
    class Entries;
    class Leaf;

    struct Spot {
        Names names;
        std::string place;
    };

    Answer answer(const Subject& subject);
    // Without the member in every entry: what one lacks, another may give it.
    Tree without_any(const Subject& subject, const std::string& place) const;
    // With another value there; null takes out what is there.
    Answer answer_with(const Subject& subject, const Names& names, json_t* value);
    Finding of_container(const Subject& subject, const Spot& spot);
    // One for each place of the result that is told of in its own way.
    std::vector<Finding> of_leaf(const Subject& subject, const Spot& spot);
    // Of one more entry only where its values arrive.
    Finding of_further_leaf(const Subject& subject, const Spot& spot);
    // What a numbered list says of the names of its entries; null where they are plain numbers from 1.
    Tree entries_of(const Subject& subject, const Names& list);
    bool is_carried_whole(const Subject& subject, const Spot& spot, Finding& finding);
    bool are_members_carried(const Subject& subject, const Names& names, const Names& result);
    std::vector<Tree> probes_of(const Subject& subject, const Spot& spot) const;
    std::string result_place(const Subject& subject, json_t* result, const Names& names) const;

    const Texts& texts_;
    const std::vector<Row>& rows_;
    PlaceNames& names_;
    Answer base_;
    std::map<std::pair<Side, std::string>, size_t> asked_;
    std::set<std::pair<Side, std::string>> whole_;
};

}  // namespace describe
