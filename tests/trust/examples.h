// examples.h: the example configurations as trees of their own.
#pragma once

#include <vector>

#include "tree.h"

Tree old_example();
Tree new_example();

// Of every device: the same settings in both layouts.
struct Example {
    const char* name;
    Tree old_document;
    Tree new_document;
};
std::vector<Example> examples();
