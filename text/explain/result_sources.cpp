// From the top down: the children of a member are taken away all at once, and a group whose loss is seen at the place
// is halved until it is known which of them it is; what is needed is looked into in turn.
#include "explain/result_sources.h"

#include <algorithm>
#include <charconv>

#include "basis/sort.h"
#include "json/pointer.h"
#include "json/writer.h"
#include "trials/effects.h"
#include "trials/variants.h"

namespace kcnvrt::text {

namespace {

constexpr size_t kMostConversions = 300;

constexpr const char* kRoot = "";

bool is_before(const ResultSource& left, const ResultSource& right) {
    if (left.is_around != right.is_around) return right.is_around;
    return compare_pointers(left.pointer, right.pointer) < 0;
}

size_t count_equal(json_t* list, const json_t* entry) {
    const char* name;
    json_t* value;
    size_t count = 0;
    json_object_foreach(list, name, value) count += json_equal(value, entry) == 1;
    size_t index;
    json_array_foreach(list, index, value) count += json_equal(value, entry) == 1;
    return count;
}

// Whether the members of an object are the same, but for one of them.
bool are_others_equal(json_t* one, json_t* other, std::string_view token) {
    if (json_object_size(one) < json_object_size(other)) return false;
    const json_t* const left_out = child_of(one, token);
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(one, name, length, value) {
        if (value != left_out && json_equal(value, json_object_getn(other, name, length)) != 1) return false;
    }
    return true;
}

}  // namespace

bool ResultSources::find() {
    if (!needed_.add({kRoot, nullptr, false})) return false;
    for (size_t i = 0; i < needed_.size(); ++i)
        if (!look_into(needed_[i])) return false;
    sort(found_.begin(), found_.end(), is_before);
    return true;
}

bool ResultSources::look_into(const ResultSource& given) {
    const ResultSource member = given;  // the list may move
    const size_t first_needed = needed_.size();
    const size_t first_found = found_.size();
    Group children = {0, 0};
    if (!list_children(member.pointer, children)) return false;
    const bool is_all = *member.pointer == '\0';
    if (children.first == children.last) return is_all || found_.add(member);
    if (!find_needed(children)) return false;
    if (is_tired()) needed_.cut(first_needed);
    if (needed_.size() != first_needed) return narrow(children, first_needed);
    if (!is_tired() && !look_at_values(member.pointer)) return false;
    return is_all || found_.size() != first_found || found_.add(member);
}

bool ResultSources::list_children(const char* pointer, Group& children) {
    json_t* const value = value_at(source_, pointer);
    const char* name;
    size_t length;
    json_t* child;
    children.first = children_.size();
    json_object_keylen_foreach(value, name, length, child) {
        if (!list_child(pointer, {name, length})) return false;
    }
    size_t index;
    json_array_foreach(value, index, child) {
        char digits[24];
        const char* const end = std::to_chars(digits, digits + sizeof digits, index).ptr;
        if (!list_child(pointer, {digits, static_cast<size_t>(end - digits)})) return false;
    }
    children.last = children_.size();
    return true;
}

bool ResultSources::list_child(const char* pointer, std::string_view name) {
    Buffer whole;
    if (!whole.append(pointer) || !whole.append("/") || !append_name(name, whole)) return false;
    const char* const kept = texts_.keep(whole.view());
    return kept != nullptr && children_.add(kept);
}

bool ResultSources::find_needed(const Group& group) {
    if (is_tired()) return true;
    Trial trial;
    if (!try_without(group, trial)) return false;
    if (!trial.is_changed) return true;
    if (group.last - group.first == 1) return add_needed(children_[group.first], trial);
    const size_t before = needed_.size();
    const size_t middle = group.first + (group.last - group.first) / 2;
    const Group halves[] = {{group.first, middle}, {middle, group.last}};
    for (const Group& half : halves)
        if (!find_needed(half)) return false;
    if (needed_.size() != before || is_tired()) return true;
    return find_needed_together(halves[0], halves[1]) && find_needed_together(halves[1], halves[0]);
}

// What another member stands in for makes no difference when it is away alone.
bool ResultSources::add_needed(const char* pointer, const Trial& trial) {
    const char* without = trial.value;
    if (!gone_.is_empty() && !keep_value(before_, without)) return false;
    return needed_.add({pointer, without, trial.is_around});
}

// Where each of two stands in for the other.
bool ResultSources::find_needed_together(const Group& one, const Group& other) {
    if (!gone_.add(other) || !find_needed(one)) return false;
    gone_.cut(gone_.size() - 1);
    return true;
}

// Sections that are not needed need not be converted again.
bool ResultSources::narrow(const Group& children, size_t first_needed) {
    const std::string_view parent = parent_of(children_[children.first]);
    const bool are_sections = parent.empty() || parent == "/Device";
    GrowingArray<Change> changes;
    for (size_t i = children.first; are_sections && i < children.last; ++i) {
        const char* const child = children_[i];
        const bool is_needed = std::any_of(needed_.begin() + first_needed, needed_.end(),
                                           [child](const ResultSource& each) { return each.pointer == child; });
        if (!is_needed && !changes.add({child, nullptr})) return false;
    }
    if (changes.is_empty()) return true;
    Json narrowed = changed_copy(source_, changes);
    Outcome outcome;
    if (!narrowed || !convert_what_passes(check_, check_.way(), narrowed.get(), outcome)) return false;
    if (json_equal(value_at(outcome.tree.get(), place_), value_at(before_, place_)) != 1) return true;
    source_ = narrowed.get();
    before_ = outcome.tree.get();
    narrowed_source_ = std::move(narrowed);
    narrowed_before_ = std::move(outcome.tree);
    return true;
}

// A member that says what the conversion would put there without it is seen only when it says something else.
bool ResultSources::look_at_values(const char* pointer) {
    Leaves leaves;
    if (!leaves.add({pointer, value_at(source_, pointer)})) return false;
    const size_t before = found_.size();
    for (size_t variant = 0; variant < kVariants && found_.size() == before; ++variant)
        if (!find_values(leaves, {0, leaves.size()}, variant)) return false;
    return true;
}

bool ResultSources::find_values(const Leaves& leaves, const Group& group, size_t variant) {
    if (is_tired() || group.first == group.last) return true;
    Trial trial;
    if (!try_variant(leaves, group, variant, trial)) return false;
    if (!trial.is_changed) return true;
    if (group.last - group.first == 1) {
        const char* const pointer = texts_.keep(leaves[group.first].pointer);
        const char* without = nullptr;
        return pointer != nullptr && keep_value(before_, without) && found_.add({pointer, without, trial.is_around});
    }
    const size_t middle = group.first + (group.last - group.first) / 2;
    return find_values(leaves, {group.first, middle}, variant) && find_values(leaves, {middle, group.last}, variant);
}

bool ResultSources::try_without(const Group& group, Trial& trial) {
    const ForAWhile for_a_while(check_.memory());
    GrowingArray<Change> changes;
    for (size_t i = group.first; i < group.last; ++i)
        if (!changes.add({children_[i], nullptr})) return false;
    for (const Group& gone : gone_)
        for (size_t i = gone.first; i < gone.last; ++i)
            if (!changes.add({children_[i], nullptr})) return false;
    return try_changes(changes, trial);
}

bool ResultSources::try_variant(const Leaves& leaves, const Group& group, size_t variant, Trial& trial) {
    const ForAWhile for_a_while(check_.memory());
    const Json made(json_array());
    GrowingArray<Change> changes;
    if (!made || !change_leaves(source_, leaves, group.first, group.last, variant, made.get(), changes)) return false;
    return changes.is_empty() || try_changes(changes, trial);
}

bool ResultSources::try_changes(GrowingArray<Change>& changes, Trial& trial) {
    const Json copy = changed_copy(source_, changes);
    Outcome after;
    if (!copy || !convert_what_passes(check_, check_.way(), copy.get(), after)) return false;
    trial.is_changed = !is_as_before(after.tree.get());
    trial.is_around = is_around(after.tree.get());
    return !trial.is_changed || keep_value(after.tree.get(), trial.value);
}

// What stands at the place, as a text that stays; null where nothing does.
bool ResultSources::keep_value(json_t* result, const char*& text) {
    const json_t* const value = value_at(result, place_);
    Buffer words;
    text = nullptr;
    if (value == nullptr) return true;
    if (write(value, {.compact = true}, words)) text = texts_.keep(words.view());
    return text != nullptr;
}

// An entry that has only moved in its list is as it was.
bool ResultSources::is_as_before(json_t* result) const {
    if (json_equal(value_at(result, place_), value_at(before_, place_)) == 1) return true;
    std::string_view rest = place_;
    while (!rest.empty()) {
        const std::string_view list{place_.data(), place_.size() - rest.size()};
        const std::string_view token = take_token(rest);
        if (has_moved(result, list, token)) return true;
    }
    return false;
}

bool ResultSources::has_moved(json_t* result, std::string_view list, std::string_view number) const {
    json_t* const entries = value_at(before_, list);
    if (!json_is_array(entries) && !is_entry_name(number)) return false;
    const json_t* const entry = child_of(entries, number);
    return count_equal(value_at(result, list), entry) >= count_equal(entries, entry);
}

bool ResultSources::is_around(json_t* result) const {
    if (place_.empty()) return false;
    json_t* const holder = value_at(before_, parent_of(place_));
    json_t* const holder_after = value_at(result, parent_of(place_));
    const std::string_view token = last_token_of(place_);
    if (holder_after == nullptr || json_is_array(holder) || is_entry_name(token)) return holder_after == nullptr;
    return !are_others_equal(holder, holder_after, token);
}

bool ResultSources::is_tired() const {
    return check_.conversions() >= kMostConversions;
}

}  // namespace kcnvrt::text
