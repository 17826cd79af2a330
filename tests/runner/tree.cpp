// Trees as text, and where two of them differ.
#include "tree.h"

namespace {

int append_to_string(const char* text, size_t size, void* data) {
    static_cast<std::string*>(data)->append(text, size);
    return 0;
}

std::string difference_of_objects(const json_t* expected, const json_t* actual) {
    const char* name;
    json_t* member;
    json_object_foreach(const_cast<json_t*>(expected), name, member) {
        const json_t* other = json_object_get(actual, name);
        if (other == nullptr) return std::string{"/"} + name + " (missing)";
        if (!json_equal(member, other)) return std::string{"/"} + name + first_difference(member, other);
    }
    json_object_foreach(const_cast<json_t*>(actual), name, member) {
        if (json_object_get(expected, name) == nullptr) return std::string{"/"} + name + " (not expected)";
    }
    return "";
}

std::string difference_of_arrays(const json_t* expected, const json_t* actual) {
    for (size_t i = 0; i < json_array_size(expected) && i < json_array_size(actual); ++i) {
        const json_t* element = json_array_get(expected, i);
        const json_t* other = json_array_get(actual, i);
        if (!json_equal(element, other)) return "/" + std::to_string(i) + first_difference(element, other);
    }
    return " (" + std::to_string(json_array_size(expected)) + " elements expected, " +
           std::to_string(json_array_size(actual)) + " there)";
}

}  // namespace

std::string text_of(const json_t* tree, Layout layout) {
    if (tree == nullptr) return "(no value)";
    const size_t flags = JSON_ENCODE_ANY | (layout == Layout::kIndented ? JSON_INDENT(2) : JSON_COMPACT);
    std::string text;
    return json_dump_callback(tree, append_to_string, &text, flags) == 0 ? text : "(a tree that cannot be printed)";
}

bool equal(const json_t* one, const json_t* other) {
    const auto absent = [](const json_t* tree) { return tree == nullptr || json_is_null(tree); };
    return (absent(one) && absent(other)) || json_equal(one, other) != 0;
}

std::string first_difference(const json_t* expected, const json_t* actual) {
    if (json_is_object(expected) && json_is_object(actual)) return difference_of_objects(expected, actual);
    if (json_is_array(expected) && json_is_array(actual)) return difference_of_arrays(expected, actual);
    return "";
}
