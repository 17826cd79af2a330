// Trees as text, in full and by way of JSON, and how deep they are.
#include "tree.h"

#include <algorithm>

namespace {

void add_text(std::string& picture, char mark, const char* text, size_t length) {
    picture += mark;
    picture += std::to_string(length);
    picture += ':';
    picture.append(text, length);
}

void add_tree(std::string& picture, const json_t* tree);

void add_members(std::string& picture, json_t* object) {
    picture += '{';
    for (void* at = json_object_iter(object); at != nullptr; at = json_object_iter_next(object, at)) {
        add_text(picture, '.', json_object_iter_key(at), json_object_iter_key_len(at));
        add_tree(picture, json_object_iter_value(at));
    }
    picture += '}';
}

void add_elements(std::string& picture, const json_t* array) {
    picture += '[';
    for (size_t i = 0; i < json_array_size(array); ++i) add_tree(picture, json_array_get(array, i));
    picture += ']';
}

void add_tree(std::string& picture, const json_t* tree) {
    switch (json_typeof(tree)) {
        case JSON_OBJECT:
            return add_members(picture, const_cast<json_t*>(tree));
        case JSON_ARRAY:
            return add_elements(picture, tree);
        case JSON_STRING:
            return add_text(picture, '"', json_string_value(tree), json_string_length(tree));
        case JSON_INTEGER:
            picture += "i" + std::to_string(json_integer_value(tree));
            return;
        case JSON_REAL:
            picture += "r" + std::to_string(json_real_value(tree));
            return;
        case JSON_TRUE:
            picture += 't';
            return;
        case JSON_FALSE:
            picture += 'f';
            return;
        case JSON_NULL:
            picture += 'n';
            return;
    }
}

constexpr size_t kAnyValue = JSON_DECODE_ANY | JSON_ALLOW_NUL;

int append_to_string(const char* text, size_t size, void* data) {
    static_cast<std::string*>(data)->append(text, size);
    return 0;
}

}  // namespace

std::string picture_of(const json_t* tree) {
    if (tree == nullptr) return "nothing";
    std::string picture;
    add_tree(picture, tree);
    return picture;
}

Tree read_tree(std::string_view text) {
    Tree tree{json_loadb(text.data(), text.size(), kAnyValue, nullptr)};
    return tree ? std::move(tree) : Tree{json_object()};
}

int levels_of(json_t* tree) {
    int deepest = 0;
    for (void* at = json_object_iter(tree); at != nullptr; at = json_object_iter_next(tree, at))
        deepest = std::max(deepest, levels_of(json_object_iter_value(at)));
    for (size_t i = 0; i < json_array_size(tree); ++i) deepest = std::max(deepest, levels_of(json_array_get(tree, i)));
    return deepest + (json_is_object(tree) || json_is_array(tree) ? 1 : 0);
}

bool survives_json(const json_t* tree) {
    std::string text;
    if (json_dump_callback(tree, append_to_string, &text, JSON_ENCODE_ANY) != 0) return false;
    const Tree again{json_loadb(text.data(), text.size(), kAnyValue | JSON_REJECT_DUPLICATES, nullptr)};
    return json_equal(tree, again.get()) != 0;
}
