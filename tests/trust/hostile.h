// hostile.h: documents to be forged, and what is done with each.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "contract.h"
#include "replacements.h"

// A small document: one section of an example, or one interface or service of it, at its place.
struct Part {
    std::string name;
    Direction direction;
    Tree document;
};

// Together they hold everything that both examples hold.
std::vector<Part> parts_of_examples();

// For each part each place, or every `step`-th of all.
void for_each_place(size_t step, const std::function<void(Part& part, const Place& place)>& visit);

// Puts a value there for one conversion, which keeps the contract.
Conduct convert_with(Part& part, const Place& place, json_t* value, const char* what);

// What a kind of document is bound to.
struct Expected {
    size_t documents;  // at least, in an ordinary run; a sample has its share of them
    long kib;          // at most held at a time
};

// What documents cost: the sum of their counts, the most of the rest.
struct Cost {
    size_t documents = 0;
    size_t rejected = 0;
    double seconds = 0;
    long bytes = 0;

    void add(const Cost& other);
};

// What the documents of one kind cost at worst, printed as a line of a table when the last of them is through, and
// compared with what is expected. The time is not: it is the machine's.
class Worst {
public:
    Worst(std::string kind, Expected expected) : kind_{std::move(kind)}, expected_{expected} {}
    ~Worst();
    Worst(const Worst&) = delete;
    Worst& operator=(const Worst&) = delete;

    Conduct add(const Conduct& conduct);

private:
    std::string kind_;
    Expected expected_;
    Cost cost_;
};
