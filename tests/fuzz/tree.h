// tree.h: JSON trees as the fuzz targets hold and compare them.
#pragma once

#include <jansson.h>

#include <string>
#include <string_view>

#include "owners.h"

// The tree in full: types, texts byte by byte, members in their order. Unlike Jansson's own text it also shows what
// JSON cannot hold. "nothing" for a null pointer.
std::string picture_of(const json_t* tree);

// The tree that a JSON text stands for, an empty object where the text is none.
Tree read_tree(std::string_view text);

// How many objects and arrays lie inside one another; Jansson's parser accepts kMostLevels.
int levels_of(json_t* tree);
inline constexpr int kMostLevels = 2048;

// Whether the tree, written as JSON and read again, is the same.
bool survives_json(const json_t* tree);
