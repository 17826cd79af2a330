// place_tree.h: the places of one layout as the tree that they are.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "layouts.h"

namespace kcnvrt {

struct PlaceNode {
    std::string step;  // a name, "*", or "[type]" for the entries of one type
    std::string is;    // as a container; "" for a leaf
    bool carries_others = false;
    json_t* entries = nullptr;        // of a numbered list, as LayoutContainer has it
    bool is_whole = false;            // carried whole
    std::vector<json_t*> behaviours;  // one for each form of its section
    std::string counterparts;         // the places that it becomes
    std::vector<std::unique_ptr<PlaceNode>> inner;

    PlaceNode* find(const std::string& step) const;
};

// The root of the layout.
std::unique_ptr<PlaceNode> place_tree(const Layouts& layouts, Layout layout);

// The node at a place; null where there is none.
PlaceNode* find_place(PlaceNode& root, const std::string& place);

}  // namespace kcnvrt
