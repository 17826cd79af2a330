// Both documents are walked together, members in the order of the expected one.
#include "difference.h"

#include <algorithm>

namespace {

std::string inner(const std::string& path, const std::string& name) {
    return path.empty() ? name : path + "/" + name;
}

// Names are compared in their own order, the expected ones first.
std::optional<Difference> in_objects(json_t* expected, json_t* actual, const std::string& path);
std::optional<Difference> in_arrays(json_t* expected, json_t* actual, const std::string& path);

std::optional<Difference> in_values(json_t* expected, json_t* actual, const std::string& path) {
    if (expected == nullptr ? actual == nullptr : json_equal(expected, actual) != 0) return std::nullopt;
    if (json_is_object(expected) && json_is_object(actual)) return in_objects(expected, actual, path);
    if (json_is_array(expected) && json_is_array(actual)) return in_arrays(expected, actual, path);
    return Difference{path, expected, actual};
}

std::optional<Difference> in_objects(json_t* expected, json_t* actual, const std::string& path) {
    const char* name;
    json_t* member;
    for (json_t* object : {expected, actual}) json_object_foreach(object, name, member) {
            auto difference =
                in_values(json_object_get(expected, name), json_object_get(actual, name), inner(path, name));
            if (difference) return difference;
        }
    return std::nullopt;
}

std::optional<Difference> in_arrays(json_t* expected, json_t* actual, const std::string& path) {
    const size_t length = std::max(json_array_size(expected), json_array_size(actual));
    for (size_t at = 0; at < length; ++at) {
        auto difference =
            in_values(json_array_get(expected, at), json_array_get(actual, at), inner(path, std::to_string(at)));
        if (difference) return difference;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Difference> difference_between(json_t* expected, json_t* actual) {
    return in_values(expected, actual, "");
}

std::string shown(json_t* value) {
    constexpr size_t kLongest = 100;
    if (value == nullptr) return "nothing";
    const std::string text = text_of(value);
    return text.size() <= kLongest ? text : text.substr(0, kLongest) + "...";
}
