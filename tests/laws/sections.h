// sections.h: the sections of the examples, each alone in a document.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "rows.h"

// A section of an example at its place in a document.
struct Section {
    std::string name;
    Side side;
    std::shared_ptr<json_t> example;
};

void PrintTo(const Section& section, std::ostream* out);

// Every section of both examples, in both layouts.
std::vector<Section> sections_of_examples();

// Those of one document. The suffix is put to their names.
std::vector<Section> sections_of(Side side, json_t* document, const std::string& suffix = "");

// An example as a whole.
Tree load_example(const std::string& name);

// An old document needs users to come back: a new one without "version" is rejected. They are added where it has none.
Tree with_users(Side side, Tree document);
