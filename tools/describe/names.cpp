// Places are put together step by step from the root.
#include "names.h"

#include <algorithm>
#include <cstdlib>

#include "numbered_list.h"

namespace describe {

namespace {

json_t* inside(json_t* value, const std::string& name) {
    return json_is_array(value) ? json_array_get(value, std::strtoul(name.c_str(), nullptr, 10))
                                : json_object_get(value, name.c_str());
}

Tree with_value_from(size_t depth, json_t* document, const Names& names, json_t* value) {
    if (depth == names.size()) return Tree{json_incref(value)};
    const std::string& name = names[depth];
    Tree copy{json_copy(document)};
    Tree inner = with_value_from(depth + 1, inside(document, name), names, value);
    if (json_is_array(document))
        json_array_set_new(copy.get(), std::strtoul(name.c_str(), nullptr, 10), inner.release());
    else if (inner == nullptr)
        json_object_del(copy.get(), name.c_str());
    else
        json_object_set_new(copy.get(), name.c_str(), inner.release());
    return copy;
}

const char* type_of(json_t* entry) {
    return json_string_value(json_object_get(entry, "type"));
}

}  // namespace

json_t* at(json_t* root, const Names& names) {
    for (const std::string& name : names) root = inside(root, name);
    return root;
}

Path path_to(json_t* root, const Names& names) {
    Path path;
    for (const std::string& name : names) path.push_back({name, root = inside(root, name)});
    return path;
}

Tree with_value(json_t* document, const Names& names, json_t* value) {
    return with_value_from(0, document, names, value);
}

Names names_of(const std::string& pointer) {
    Names names;
    for (size_t at = 0; at < pointer.size();) {
        const size_t end = std::min(pointer.find('/', at + 1), pointer.size());
        names.push_back(pointer.substr(at + 1, end - at - 1));
        at = end;
    }
    return names;
}

std::string pointer_of(const Names& names) {
    std::string pointer;
    for (const std::string& name : names) pointer += "/" + name;
    return pointer;
}

bool PlaceNames::is_keyed(Side side, const std::string& place, const Path& path) const {
    const auto [known, is_new] = keyed_.try_emplace({side, place}, false);
    if (is_new)
        known->second = std::any_of(rows_.begin(), rows_.end(), [&](const Row& row) {
            return row.says("keyed") && row.is_of(side) && row.matches(path);
        });
    return known->second;
}

std::string PlaceNames::step(Side side, const std::string& container, const Path& path, const Step& step) const {
    json_t* const parent = path.empty() ? nullptr : path.back().value;
    if (json_is_array(parent)) return "*";
    if (is_keyed(side, container, path)) {
        const char* const type = type_of(step.value);
        const bool is_typed = type != nullptr && typed_.count({side, container}) != 0;
        return is_typed ? std::string{"["} + type + "]" : "*";
    }
    return is_number(step.name) ? "*" : step.name;
}

std::string PlaceNames::inside(Side side, const std::string& place, const Path& path, const Step& next) const {
    return place + "/" + step(side, place, path, next);
}

std::string PlaceNames::place(Side side, const std::vector<json_t*>& documents, const Names& names) const {
    json_t* document = documents.front();
    for (json_t* candidate : documents)
        if (at(candidate, names) != nullptr) {
            document = candidate;
            break;
        }
    std::string place;
    Path path;
    for (const Step& next : path_to(document, names)) {
        place = inside(side, place, path, next);
        path.push_back(next);
    }
    return place;
}

const char* PlaceNames::container(Side side, const std::string& place, const Path& path) const {
    json_t* const value = path.back().value;
    if (json_is_array(value)) return "array";
    if (!json_is_object(value)) return "";
    if (is_keyed(side, place, path)) return "names";
    return is_numbered_list(value) ? "list" : "object";
}

std::string without_types(const std::string& place) {
    Names names = names_of(place);
    for (std::string& name : names)
        if (name.size() > 2 && name.front() == '[') name = "*";
    return pointer_of(names);
}

}  // namespace describe
