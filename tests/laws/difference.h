// difference.h: where two documents differ first.
#pragma once

#include <optional>
#include <string>

#include "tree.h"

struct Difference {
    std::string path;  // "" for the documents themselves
    json_t* expected;  // null where nothing is
    json_t* actual;
};

std::optional<Difference> difference_between(json_t* expected, json_t* actual);

// A value as a message shows it: on one line and not at length.
std::string shown(json_t* value);
