// fingerprint.h: a tree as one number, for comparing many of them.
#pragma once

#include <jansson.h>

#include <cstdint>

// Of the values, the names, their order, and how many references each value has: two different trees, or one that was
// changed or whose references were miscounted, have different fingerprints but by chance. Visits every node. Of a text
// of more than a few thousand bytes only the length and both ends count.
uint64_t fingerprint(const json_t* tree);
