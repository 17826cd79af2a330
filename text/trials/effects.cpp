#include "trials/effects.h"

#include <algorithm>
#include <charconv>

#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

size_t count_entries(json_t* object) {
    const char* name;
    size_t length;
    json_t* value;
    size_t count = 0;
    json_object_keylen_foreach(object, name, length, value) count += is_entry_name({name, length});
    return count;
}

}  // namespace

bool is_entry_name(std::string_view name) {
    return name != "0" && index_of(name) != SIZE_MAX;
}

bool Effects::find(json_t* with, json_t* without) {
    return compare(with, without, false);
}

bool Effects::compare(json_t* with, json_t* without, bool is_whole) {
    if (with == without || json_equal(with, without) == 1) return true;
    if (!is_whole && json_is_object(with) && json_is_object(without)) return compare_members(with, without);
    if (!is_whole && json_is_array(with) && json_is_array(without)) return compare_elements(with, without);
    const char* const pointer = texts_.keep(path_.view());
    return pointer != nullptr && pointers_.add(pointer);
}

bool Effects::compare_members(json_t* with, json_t* without) {
    const bool has_moved = count_entries(with) != count_entries(without);
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(with, name, length, value) {
        json_t* const other = json_object_getn(without, name, length);
        if (!compare_at({name, length}, value, other, has_moved && is_entry_name({name, length}))) return false;
    }
    json_object_keylen_foreach(without, name, length, value) {
        if (json_object_getn(with, name, length) != nullptr) continue;
        if (!compare_at({name, length}, nullptr, value, true)) return false;
    }
    return true;
}

bool Effects::compare_elements(json_t* with, json_t* without) {
    const bool has_moved = json_array_size(with) != json_array_size(without);
    const size_t count = std::max(json_array_size(with), json_array_size(without));
    for (size_t i = 0; i < count; ++i) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, i).ptr;
        const std::string_view name{digits, static_cast<size_t>(end - digits)};
        if (!compare_at(name, json_array_get(with, i), json_array_get(without, i), has_moved)) return false;
    }
    return true;
}

bool Effects::compare_at(std::string_view name, json_t* with, json_t* without, bool is_whole) {
    const size_t length = path_.size();
    if (!path_.append("/") || !append_name(name, path_)) return false;
    const bool has_memory = compare(with, without, is_whole);
    path_.cut(length);
    return has_memory;
}

}  // namespace kcnvrt::text
