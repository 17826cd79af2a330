// The conditions, asked one after the other.
#include "conditions.h"

#include "value_at.h"

namespace {

bool has_entries(json_t* container) {
    json_t* count = json_object_get(container, "max_instance");
    return json_array_size(container) + json_object_size(container) > (count == nullptr ? 0u : 1u);
}

template <class Holds>
bool any_of(json_t* list, const Holds& holds) {
    for (size_t i = 0; i < json_array_size(list); ++i)
        if (holds(json_array_get(list, i))) return true;
    return false;
}

}  // namespace

bool holds_in(const Row& row, json_t* object) {
    json_t* conditions = row["where"];
    const auto is_there = [object](json_t* name) {
        return json_object_get(object, json_string_value(name)) != nullptr;
    };
    const auto is_absent = [&](json_t* name) { return !is_there(name); };
    if (any_of(json_object_get(conditions, "has"), is_absent)) return false;
    if (any_of(json_object_get(conditions, "lacks"), is_there)) return false;
    json_t* groups = json_object_get(conditions, "lacks one group");
    if (groups != nullptr && !any_of(groups, [&](json_t* group) { return !any_of(group, is_there); })) return false;
    const auto is_filled = [object](json_t* name) {
        return has_entries(json_object_get(object, json_string_value(name)));
    };
    if (any_of(json_object_get(conditions, "lacks entries"), is_filled)) return false;
    const auto equals = [object](const char* name, json_t* value) {
        return json_equal(json_object_get(object, name), value);
    };
    const char* name;
    json_t* value;
    json_object_foreach(json_object_get(conditions, "is"), name, value) {
        if (!equals(name, value)) return false;
    }
    json_object_foreach(json_object_get(conditions, "is not"), name, value) {
        if (equals(name, value)) return false;
    }
    return true;
}

bool is_for(const Row& row, json_t* document) {
    const char* path;
    json_t* value;
    json_object_foreach(row["in documents with"], path, value) {
        if (!json_equal(value_at(document, path), value)) return false;
    }
    return true;
}

bool speaks_of(const Row& row, json_t* value) {
    return !row.says("when") || any_of(row["when"], [value](json_t* one) { return json_equal(one, value) != 0; });
}
