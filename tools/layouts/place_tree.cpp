#include "place_tree.h"

#include <algorithm>

#include "places.h"

namespace kcnvrt {

namespace {

PlaceNode& node_at(PlaceNode& root, const std::string& place) {
    PlaceNode* node = &root;
    for (const std::string& step : steps_of(place)) {
        PlaceNode* inner = node->find(step);
        if (inner == nullptr) {
            node->inner.push_back(std::make_unique<PlaceNode>());
            inner = node->inner.back().get();
            inner->step = step;
        }
        node = inner;
    }
    return *node;
}

// "[a|b]" once for each type.
std::vector<std::string> each_place(const std::string& place) {
    std::vector<std::string> places{""};
    for (const std::string& step : steps_of(place)) {
        std::vector<std::string> names;
        for (const std::string& type : types_of(step)) names.push_back("[" + type + "]");
        if (names.empty()) names.push_back(step);
        std::vector<std::string> longer;
        for (const std::string& before : places)
            for (const std::string& name : names) longer.push_back(before + "/" + name);
        places = std::move(longer);
    }
    return places;
}

std::string counterparts_of(const LayoutLine& line, Layout layout) {
    constexpr std::size_t kMost = 3;
    const auto places = line.places(layout == Layout::kOld ? Layout::kNew : Layout::kOld);
    std::string list;
    for (std::size_t at = 0; at < std::min(places.size(), kMost); ++at) list += (at == 0 ? "" : ", ") + places[at];
    return places.size() > kMost ? list + ", ..." : list;
}

void add_line(PlaceNode& root, const LayoutLine& line, Layout layout) {
    for (const std::string& pattern : line.places(layout))
        for (const std::string& names : each_name(pattern))
            for (const std::string& place : each_place(names)) {
                Steps steps = steps_of(place);
                const bool is_whole = steps.back() == "**";
                if (is_whole) steps.pop_back();
                PlaceNode& node = node_at(root, place_of(steps));
                // What is there without the flag has been told.
                if (line.has_flag() && !node.behaviours.empty()) continue;
                node.is_whole = node.is_whole || is_whole;
                node.behaviours.push_back(line.behaviour(layout));
                if (node.counterparts.empty()) node.counterparts = counterparts_of(line, layout);
            }
}

}  // namespace

PlaceNode* PlaceNode::find(const std::string& wanted) const {
    const auto is_wanted = [&](const auto& node) { return node->step == wanted; };
    const auto found = std::find_if(inner.begin(), inner.end(), is_wanted);
    return found == inner.end() ? nullptr : found->get();
}

std::unique_ptr<PlaceNode> place_tree(const Layouts& layouts, Layout layout) {
    auto root = std::make_unique<PlaceNode>();
    root->is = "object";
    for (const LayoutContainer& container : layouts.containers(layout)) {
        PlaceNode& node = node_at(*root, container.place);
        node.is = container.is;
        node.carries_others = container.carries_others;
        node.entries = container.entries;
        if (container.asked != nullptr) node.behaviours.push_back(container.asked);
    }
    for (const LayoutLine& line : layouts.lines())
        if (line.behaviour(layout) != nullptr) add_line(*root, line, layout);
    return root;
}

PlaceNode* find_place(PlaceNode& root, const std::string& place) {
    PlaceNode* node = &root;
    for (const std::string& step : steps_of(place))
        if (node != nullptr) node = node->find(step);
    return node;
}

}  // namespace kcnvrt
