// finding.h: what is known of a place of a layout.
#pragma once

#include <string>
#include <vector>

#include "tree.h"

namespace describe {

struct Finding {
    std::string place;
    std::string container;             // "object", "array", "list", "names"; "" for a leaf or what is carried whole
    bool is_whole = false;             // carried whole, whatever it is
    bool carries_others = false;       // an object whose other members are carried, a list whose length is
    std::string word;                  // of the table that has it; "" where none has
    std::vector<std::string> results;  // the places of the other layout that it decides
    Tree entries;                      // what names a numbered list's entries may have; null for any number from 1
    bool is_name = false;              // is the name of a member of the other layout
    bool is_selector = false;          // decides so many that only their common container is named
    Tree behaviour;
    bool is_dropped = false;
    Tree example;
};

void add_once(std::vector<std::string>& places, const std::string& place);

// Beside the others, or into one that says the same of the place: another form of a section, or another entry, may
// treat it in another way.
void keep(Finding finding, std::vector<Finding>& findings);
// Where one more entry arrives, beside where the known ones do.
void add_results(const Finding& finding, std::vector<Finding>& findings);

}  // namespace describe
