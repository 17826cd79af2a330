// tree.h: JSON trees as the runner holds and prints them.
#pragma once

#include <jansson.h>

#include <string>
#include <string_view>

#include "owners.h"

enum class Layout { kCompact, kIndented };

// The tree as text in its own order of members; "(no value)" for a null pointer. Nothing stays allocated by Jansson.
std::string text_of(const json_t* tree, Layout layout = Layout::kCompact);

// Equal as values; a null pointer and JSON null are the same here, since a case writes both as null.
bool equal(const json_t* one, const json_t* other);

// Where two unequal trees differ first, as the path of member names and positions; "" when they are equal.
std::string first_difference(const json_t* expected, const json_t* actual);
