// described.h: text/layouts.json, and the documents that its lines speak of.
#pragma once

#include <string>
#include <vector>

#include "conversion.h"
#include "names.h"

namespace describe {

Tree load_layouts();

struct Example {
    Side side;
    uint8_t flags;
    json_t* root;
};

// In the order in which they are written.
std::vector<Example> documents_of(json_t* layouts);

// Where a place of the description is in a document.
std::vector<Names> matches(json_t* root, const std::string& place);

// Whether a message is of the list, with anything for what it leaves open.
bool is_listed(const std::string& message, json_t* list);

}  // namespace describe
