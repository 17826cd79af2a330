// Both documents are walked together.
#include "changes.h"

#include <algorithm>

namespace describe {

namespace {

void add_changes(json_t* one, json_t* other, Names& names, std::set<Names>& found) {
    if (one == other || (one != nullptr && other != nullptr && json_equal(one, other) != 0)) return;
    const auto step_into = [&](const std::string& name, json_t* first, json_t* second) {
        names.push_back(name);
        add_changes(first, second, names, found);
        names.pop_back();
    };
    if (json_is_object(one) && json_is_object(other)) {
        const char* name;
        json_t* member;
        json_object_foreach(one, name, member) step_into(name, member, json_object_get(other, name));
        json_object_foreach(other, name, member) if (json_object_get(one, name) == nullptr)
            step_into(name, nullptr, member);
    } else if (json_is_array(one) && json_is_array(other)) {
        const size_t length = std::max(json_array_size(one), json_array_size(other));
        for (size_t at = 0; at < length; ++at)
            step_into(std::to_string(at), json_array_get(one, at), json_array_get(other, at));
    } else {
        found.insert(names);
    }
}

}  // namespace

std::set<Names> changes(json_t* one, json_t* other) {
    std::set<Names> found;
    Names names;
    add_changes(one, other, names, found);
    return found;
}

}  // namespace describe
