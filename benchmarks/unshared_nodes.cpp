// Values are told apart by their addresses: what the source holds as well is shared.
#include "unshared_nodes.h"

#include <unordered_set>

namespace kcnvrt::bench {

namespace {

using Nodes = std::unordered_set<const json_t*>;

void collect(json_t* value, Nodes& nodes) {
    if (!nodes.insert(value).second) return;
    for (const auto [name, member] : members(value)) collect(member, nodes);
    for (const auto [number, element] : elements(value)) collect(element, nodes);
}

// Jansson's containers begin with room for eight and double it when they are full.
size_t growths(size_t size) {
    size_t count = 0;
    for (size_t room = 8; room < size; room *= 2) ++count;
    return count;
}

size_t allocations_of(json_t* value) {
    switch (json_typeof(value)) {
        case JSON_OBJECT:
            return 2 + growths(json_object_size(value)) + json_object_size(value);
        case JSON_ARRAY:
            return 2 + growths(json_array_size(value));
        case JSON_STRING:
            return 2;
        case JSON_INTEGER:
        case JSON_REAL:
            return 1;
        default:
            return 0;  // true, false and null are there once for all
    }
}

void count(json_t* value, Nodes& known, UnsharedNodes& unshared) {
    if (!known.insert(value).second) return;
    ++unshared.nodes;
    unshared.allocations += allocations_of(value);
    for (const auto [name, member] : members(value)) count(member, known, unshared);
    for (const auto [number, element] : elements(value)) count(element, known, unshared);
}

void mark(json_t* value, const Nodes& known, std::vector<bool>& is_unshared) {
    is_unshared.push_back(!known.contains(value));
    if (!is_unshared.back()) return;
    for (const auto [name, member] : members(value)) mark(member, known, is_unshared);
    for (const auto [number, element] : elements(value)) mark(element, known, is_unshared);
}

Json remake(json_t* value, std::vector<bool>::const_iterator& is_unshared) {
    if (!*is_unshared++) return share(value);
    switch (json_typeof(value)) {
        case JSON_OBJECT: {
            Json made = object();
            for (const auto [name, member] : members(value)) set(made.get(), name, remake(member, is_unshared));
            return made;
        }
        case JSON_ARRAY: {
            Json made = array();
            for (const auto [number, element] : elements(value)) append(made.get(), remake(element, is_unshared));
            return made;
        }
        case JSON_STRING:
            return string(view_of(value));
        case JSON_INTEGER:
            return integer(json_integer_value(value));
        case JSON_REAL:
            return Json{json_real(json_real_value(value))};
        default:
            return share(value);
    }
}

}  // namespace

UnsharedNodes unshared_nodes(json_t* result, json_t* source) {
    Nodes known;
    collect(source, known);
    UnsharedNodes unshared;
    count(result, known, unshared);
    return unshared;
}

Remaker::Remaker(json_t* result, json_t* source) : result_{result} {
    Nodes known;
    collect(source, known);
    mark(result, known, is_unshared_);
}

Json Remaker::operator()() const {
    auto is_unshared = is_unshared_.begin();
    return remake(result_, is_unshared);
}

}  // namespace kcnvrt::bench
