#include "losses/comparison.h"

#include <algorithm>
#include <charconv>

#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

// The token of an entry in a pointer.
class Token {
public:
    explicit Token(const Entry& entry) : name_{entry.name} {
        if (!name_.empty()) return;
        const char* const end = std::to_chars(digits_, digits_ + sizeof digits_, entry.number).ptr;
        name_ = {digits_, static_cast<size_t>(end - digits_)};
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;

    std::string_view text() const { return name_; }

private:
    std::string_view name_;
    char digits_[24];
};

bool set_member(json_t* object, std::string_view name, json_t* value) {
    return json_object_setn_nocheck(object, name.data(), name.size(), value) == 0;
}

}  // namespace

bool Comparison::compare(json_t* before, json_t* after) {
    const bool are_containers =
        (json_is_array(before) && json_is_array(after)) || (json_is_object(before) && json_is_object(after));
    if (are_containers) return compare_containers(before, after);
    return json_equal(before, after) == 1 || report(K_TEXT_CHANGED, before, after);
}

bool Comparison::compare_containers(json_t* before, json_t* after) {
    Json added(json_is_array(before) ? json_array() : json_object());
    const bool has_memory =
        added && compare_members(before, after, added.get()) && compare_entries(before, after, added.get());
    if (!has_memory || json_object_size(added.get()) + json_array_size(added.get()) == 0) return has_memory;
    json_t* const kept = keep(std::move(added));
    return kept != nullptr && report(K_TEXT_DEFAULTED, nullptr, kept);
}

// Those whose names are no numbers.
bool Comparison::compare_members(json_t* before, json_t* after, json_t* added) {
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(before, name, length, value) {
        if (number_of({name, length}) != 0) continue;
        if (!compare_at({name, length}, value, json_object_getn(after, name, length))) return false;
    }
    json_object_keylen_foreach(after, name, length, value) {
        const bool is_added = number_of({name, length}) == 0 && json_object_getn(before, name, length) == nullptr;
        if (is_added && !set_member(added, {name, length}, value)) return false;
    }
    return true;
}

bool Comparison::compare_entries(json_t* before, json_t* after, json_t* added) {
    GrowingArray<Entry> entries;
    GrowingArray<Entry> entries_after;
    GrowingArray<size_t> partners;
    GrowingArray<bool> is_taken;
    const bool are_matched = collect_entries(before, entries) && collect_entries(after, entries_after) &&
                             match_entries(entries, entries_after, may_move(), partners);
    if (!are_matched) return false;
    for (size_t i = 0; i < entries_after.size(); ++i)
        if (!is_taken.add(false)) return false;
    for (size_t i = 0; i < entries.size(); ++i) {
        const Entry none = {entries[i].number, {}, nullptr};
        const bool has_partner = partners[i] != kNoEntry;
        if (has_partner) is_taken[partners[i]] = true;
        if (!compare_entry(entries[i], has_partner ? entries_after[partners[i]] : none)) return false;
    }
    for (size_t i = 0; i < entries_after.size(); ++i) {
        const Entry& entry = entries_after[i];
        if (is_taken[i]) continue;
        const bool is_stored = json_is_array(added) ? json_array_append(added, entry.value) == 0
                                                    : set_member(added, entry.name, entry.value);
        if (!is_stored) return false;
    }
    return true;
}

bool Comparison::compare_entry(const Entry& before, const Entry& after) {
    const Token token(before);
    const size_t length = path_.size();
    const bool is_told = before.number == after.number || (path_.append("/") && path_.append(token.text()) &&
                                                           report_renumbered(before.number, after.number));
    path_.cut(length);
    return is_told && compare_at(token.text(), before.value, after.value);
}

bool Comparison::compare_at(std::string_view name, json_t* before, json_t* after) {
    const size_t length = path_.size();
    if (!path_.append("/") || !append_name(name, path_)) return false;
    const bool has_memory = after == nullptr ? report(K_TEXT_DROPPED, before, nullptr) : compare(before, after);
    path_.cut(length);
    return has_memory;
}

bool Comparison::may_move() const {
    return std::find(ordered_.begin(), ordered_.end(), path_.view()) == ordered_.end();
}

bool Comparison::report(uint32_t kind, json_t* before, json_t* after) {
    const char* const pointer = pointers_.keep(path_.view());
    return pointer != nullptr && differences_.add({kind, pointer, before, after});
}

bool Comparison::report_renumbered(uint64_t before, uint64_t after) {
    json_t* const old_number = keep(Json(json_integer(static_cast<json_int_t>(before))));
    json_t* const new_number = keep(Json(json_integer(static_cast<json_int_t>(after))));
    return old_number != nullptr && new_number != nullptr && report(K_TEXT_RENUMBERED, old_number, new_number);
}

json_t* Comparison::keep(Json value) {
    json_t* const kept = value.get();
    return kept != nullptr && json_array_append_new(made_.get(), value.release()) == 0 ? kept : nullptr;
}

}  // namespace kcnvrt::text
