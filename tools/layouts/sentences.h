// sentences.h: what becomes of values, in words.
#pragma once

#include <jansson.h>

#include <string>
#include <vector>

namespace kcnvrt {

// As JSON, with the flags of Jansson's printer.
std::string json_text(json_t* value, std::size_t flags);
// On one line.
std::string shown(json_t* value);

// One sentence for the types of which the same is said.
std::vector<std::string> sentences_of(json_t* behaviour);

}  // namespace kcnvrt
