// lookups.h: what a conversion asks its source for.
//
// The linker leads the look-ups of the library to this file. So the targets learn from the library itself which members
// each section reads, and in which of them it walks over members or elements: no list of names can go stale.
#pragma once

#include <jansson.h>

#include <functional>
#include <string>
#include <vector>

// A member that was asked for, there or not.
struct Lookup {
    json_t* object;
    std::string name;
};

// Each once, in the order in which they were made.
struct Lookups {
    std::vector<Lookup> members;
    std::vector<json_t*> walked;  // objects and arrays
};

// Converts the source once, for the sake of what is looked up.
using Trial = std::function<void(json_t* source)>;

Lookups lookups_of(json_t* source, const Trial& trial);
