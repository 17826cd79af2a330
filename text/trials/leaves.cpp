#include "trials/leaves.h"

#include <algorithm>
#include <charconv>

#include "basis/sort.h"
#include "json/pointer.h"

namespace kcnvrt::text {

bool is_leaf(const json_t* value) {
    return json_object_size(value) + json_array_size(value) == 0;
}

bool Leaves::add(const Piece& piece) {
    path_.cut(0);
    return path_.append(piece.pointer) && add_value(piece.value);
}

bool Leaves::add_value(json_t* value) {
    if (is_leaf(value)) {
        const char* const pointer = pointers_.keep(path_.view());
        return pointer != nullptr && leaves_.add({{pointer, path_.size()}, value, false});
    }
    const char* name;
    size_t length;
    json_t* child;
    json_object_keylen_foreach(value, name, length, child) {
        if (!add_child({name, length}, child)) return false;
    }
    size_t index;
    json_array_foreach(value, index, child) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, index).ptr;
        if (!add_child({digits, static_cast<size_t>(end - digits)}, child)) return false;
    }
    return true;
}

bool Leaves::add_child(std::string_view name, json_t* value) {
    const size_t length = path_.size();
    const bool has_memory = path_.append("/") && append_name(name, path_) && add_value(value);
    path_.cut(length);
    return has_memory;
}

bool Leaves::sort() {
    for (size_t i = 0; i < leaves_.size(); ++i)
        if (!sorted_.add(i)) return false;
    text::sort(sorted_.begin(), sorted_.end(),
               [this](size_t left, size_t right) { return leaves_[left].pointer < leaves_[right].pointer; });
    return true;
}

bool Leaves::mark(size_t index) {
    const bool is_new = !leaves_[index].is_used;
    leaves_[index].is_used = true;
    return is_new;
}

bool Leaves::mark_at(std::string_view pointer) {
    const size_t* const found = std::partition_point(
        sorted_.begin(), sorted_.end(), [this, pointer](size_t leaf) { return leaves_[leaf].pointer < pointer; });
    return found != sorted_.end() && leaves_[*found].pointer == pointer && mark(*found);
}

}  // namespace kcnvrt::text
