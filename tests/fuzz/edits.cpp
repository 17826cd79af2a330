// A place and a change to it, both chosen by the bytes of the fuzzer.
#include "edits.h"

#include <string>
#include <vector>

namespace {

constexpr int kMostEdits = 32;

void add_containers(json_t* tree, std::vector<json_t*>& containers) {
    if (json_is_object(tree) || json_is_array(tree)) containers.push_back(tree);
    for (void* at = json_object_iter(tree); at != nullptr; at = json_object_iter_next(tree, at))
        add_containers(json_object_iter_value(at), containers);
    for (size_t i = 0; i < json_array_size(tree); ++i) add_containers(json_array_get(tree, i), containers);
}

Tree leaf(Bytes& bytes) {
    switch (bytes.below(8)) {
        case 0:
            return Tree{json_null()};
        case 1:
            return Tree{json_true()};
        case 2:
            return Tree{json_object()};
        case 3:
            return Tree{json_array()};
        case 4:
            return Tree{json_real(static_cast<double>(bytes.below(4)))};
        case 5:
            return Tree{json_stringn_nocheck("~/", 2)};
        default:
            return Tree{json_integer(static_cast<json_int_t>(bytes.below(4)))};
    }
}

void edit_array(json_t* array, Bytes& bytes) {
    const size_t at = bytes.below(json_array_size(array) + 1 > 256 ? 256 : json_array_size(array) + 1);
    switch (bytes.below(3)) {
        case 0:
            json_array_insert_new(array, at, leaf(bytes).release());
            return;
        case 1:
            json_array_remove(array, at);
            return;
        default:
            json_array_set_new(array, at, leaf(bytes).release());
            return;
    }
}

// One of the names that the object has, or a new one.
std::string name_in(json_t* object, Bytes& bytes) {
    size_t skipped = bytes.below(32);
    for (void* at = json_object_iter(object); at != nullptr; at = json_object_iter_next(object, at))
        if (skipped-- == 0) return {json_object_iter_key(at), json_object_iter_key_len(at)};
    constexpr const char* kNames[] = {"", "a", "b", "~", "/", "0", "-", "~1"};
    return kNames[bytes.below(8)];
}

void edit_object(json_t* object, Bytes& bytes) {
    const std::string name = name_in(object, bytes);
    if (bytes.below(3) == 0)
        json_object_deln(object, name.data(), name.size());
    else
        json_object_setn_new_nocheck(object, name.data(), name.size(), leaf(bytes).release());
}

}  // namespace

void edit(Tree& tree, Bytes& bytes) {
    for (int edits = 0; edits < kMostEdits && !bytes.are_used_up(); ++edits) {
        std::vector<json_t*> containers;
        add_containers(tree.get(), containers);
        if (containers.empty()) {
            tree = leaf(bytes);
            continue;
        }
        json_t* const chosen = containers[bytes.next_pair() % containers.size()];
        if (json_is_array(chosen))
            edit_array(chosen, bytes);
        else
            edit_object(chosen, bytes);
    }
}
