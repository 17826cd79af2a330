#include "trials/changed_copy.h"

#include "basis/sort.h"
#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

// The changes in and below one value, all of whose pointers begin with the same `common` bytes.
struct Group {
    const Change* first;
    const Change* last;
    size_t common;

    bool is_of_the_value() const { return first->pointer.size() == common; }

    std::string_view first_token() const { return token_of(*first); }
    std::string_view last_token() const { return token_of(*(last - 1)); }

private:
    std::string_view token_of(const Change& change) const {
        std::string_view rest = change.pointer;
        rest.remove_prefix(common);
        return take_token(rest);
    }
};

Json changed(json_t* value, const Group& group);

bool change_child(json_t* container, std::string_view token, const Group& group) {
    if (!group.is_of_the_value()) {
        Json child = changed(child_of(container, token), group);
        return child && replace_child(container, token, child.get());
    }
    json_t* const value = group.first->value;
    return value == nullptr ? remove_child(container, token) : replace_child(container, token, value);
}

// From behind, so that the elements in front of one that goes keep their indexes.
bool change_children(json_t* container, Group group) {
    while (group.first != group.last) {
        const std::string_view token = group.last_token();
        const size_t common = group.common + 1 + token.size();
        Group child = {group.last - 1, group.last, common};
        while (child.first != group.first && Group{child.first - 1, child.last, group.common}.first_token() == token)
            --child.first;
        if (!change_child(container, token, child)) return false;
        group.last = child.first;
    }
    return true;
}

// Jansson's copy says nothing of members that found no memory.
bool is_whole(const json_t* copy, const json_t* value) {
    return copy != nullptr && json_object_size(copy) == json_object_size(value) &&
           json_array_size(copy) == json_array_size(value);
}

Json changed(json_t* value, const Group& group) {
    Json copy(json_copy(value));
    if (!is_whole(copy.get(), value) || !change_children(copy.get(), group)) return nullptr;
    return copy;
}

}  // namespace

Json deep_copy(json_t* value) {
    Json copy(json_deep_copy(value));
    return json_equal(copy.get(), value) == 1 ? std::move(copy) : nullptr;
}

Json changed_copy(json_t* root, GrowingArray<Change>& changes) {
    sort(changes.begin(), changes.end(),
         [](const Change& left, const Change& right) { return compare_pointers(left.pointer, right.pointer) < 0; });
    return changed(root, {changes.begin(), changes.end(), 0});
}

}  // namespace kcnvrt::text
