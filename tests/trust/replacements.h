// replacements.h: every place in a tree where a value stands, for putting another one there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tree.h"

struct Place {
    json_t* container;  // an object or array of the tree
    std::string name;   // in an object
    size_t index;       // in an array
    Tree value;         // what stands there, kept alive
    std::string path;   // of names and positions, separated by "/"
};

// All places below the root of a tree, outer ones first.
std::vector<Place> places_in(json_t* tree);

// A path whose numbers and positions are "*", so that the entries of a list have one pattern.
std::string pattern_of(std::string_view path);

bool is_leaf(const json_t* value);

// Another value in that place; a place in a tree that has been changed above it is not in the tree any more.
void put(const Place& place, Tree value);

// A value in a place for as long as this lives.
class Replacement {
public:
    Replacement(const Place& place, json_t* value) : place_{place} { put(place_, Tree{json_incref(value)}); }
    ~Replacement() { put(place_, Tree{json_incref(place_.value.get())}); }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

private:
    const Place& place_;
};
