// Trees are walked for their places, and values exchanged there.
#include "replacements.h"

#include <algorithm>
#include <cctype>

namespace {

void add_places(std::vector<Place>& places, json_t* tree, const std::string& path);

void add_place(std::vector<Place>& places, json_t* container, std::string name, size_t index, json_t* value,
               const std::string& path) {
    const std::string own_path = path.empty() ? name : path + "/" + name;
    places.push_back({container, std::move(name), index, Tree{json_incref(value)}, own_path});
    add_places(places, value, own_path);
}

void add_places(std::vector<Place>& places, json_t* tree, const std::string& path) {
    const char* name;
    json_t* member;
    json_object_foreach(tree, name, member) add_place(places, tree, name, 0, member, path);
    for (size_t i = 0; i < json_array_size(tree); ++i)
        add_place(places, tree, std::to_string(i), i, json_array_get(tree, i), path);
}

bool is_number(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

}  // namespace

std::vector<Place> places_in(json_t* tree) {
    std::vector<Place> places;
    add_places(places, tree, "");
    return places;
}

std::string pattern_of(std::string_view path) {
    std::string pattern;
    for (size_t at = 0; at <= path.size();) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string_view name = path.substr(at, end - at);
        if (at != 0) pattern += '/';
        pattern += is_number(name) ? "*" : name;
        at = end + 1;
    }
    return pattern;
}

bool is_leaf(const json_t* value) {
    return !json_is_object(value) && !json_is_array(value);
}

void put(const Place& place, Tree value) {
    if (json_is_array(place.container))
        json_array_set_new(place.container, place.index, value.release());
    else
        json_object_setn_new_nocheck(place.container, place.name.data(), place.name.size(), value.release());
}
