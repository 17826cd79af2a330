// generator.h: valid documents, made from an example by chance.
//
// Every member of the example is there or not; every list has as many entries as chance gives it, each made from one of
// the example's; every leaf gets a value of its kind. values.json says what cannot be seen from the example: which
// leaves take which values, which objects are keyed by names of their own, which members are never absent.
#pragma once

#include <initializer_list>
#include <map>
#include <random>
#include <vector>

#include "rows.h"
#include "visits.h"
#include "word_places.h"

class Generator {
public:
    // The words are those of the example.
    Generator(Side side, const std::vector<Row>& values, const WordPlaces& words, unsigned seed)
        : side_{side}, values_{values}, words_{words}, random_{seed} {}

    // A document like the example.
    Tree like(json_t* example);

    // What all documents so far had.
    const Visits& visits() const { return visits_; }
    // What they should have had: fields of the example that were never there, or always although they need not be, and
    // values that were never chosen.
    std::vector<std::string> unvisited() const;

private:
    // A place of the example: its path, and as what it counts: positions and names of one's own are "*", or "[type]".
    struct Place {
        Path path;
        std::string field;
    };

    Tree vary(Place& place, json_t* example);
    Tree vary_list(Place& place, json_t* example);
    Tree vary_keyed(Place& place, json_t* example);
    Tree vary_object(Place& place, json_t* example);
    Tree vary_members(Place& place, json_t* example);
    Tree vary_array(Place& place, json_t* example);
    Tree vary_leaf(Place& place, json_t* example);
    Tree inside(Place& place, const std::string& name, const std::string& counts_as, json_t* example);

    // The first row on that place that says one of these, and what it says; or null.
    const Row* row_of(const Place& place, std::initializer_list<const char*> says);
    json_t* said(const Place& place, const char* what);
    void expect(const Place& place, const std::string& branch) { expected_.add(place.field, branch); }
    void visit(const Place& place, const std::string& branch) { visits_.add(place.field, branch); }

    size_t below(size_t end) { return end == 0 ? 0 : random_() % end; }
    bool chance(size_t of_hundred) { return below(100) < of_hundred; }
    size_t length_of(const Place& place, size_t longest);
    std::string digits();
    std::string word();
    json_t* any_number();
    json_t* of_kind(const std::string& kind, const Place& place, json_t* example);
    json_t* like_leaf(json_t* example);

    Side side_;
    const std::vector<Row>& values_;
    const WordPlaces& words_;
    std::mt19937 random_;
    bool is_sparse_ = false;  // most members are absent
    Visits visits_;
    Visits expected_;
    std::map<std::string, const Row*> rows_;  // known already, by place and what they say
};
