// Entries are alike by the values that they have in common, and the more so, the fewer entries have such a value: a
// name says more than a switch.
#include "losses/list_matching.h"

#include <algorithm>
#include <charconv>

#include "basis/sort.h"
#include "losses/entry_features.h"

namespace kcnvrt::text {

namespace {

// How much one entry before and one after are alike.
struct Pair {
    size_t before;
    size_t after;
    unsigned likeness;
    bool has_same_number;
};

struct Numbered {
    uint64_t number;
    size_t entry;
};

bool fill(GrowingArray<bool>& flags, size_t count) {
    while (flags.size() < count)
        if (!flags.add(false)) return false;
    return true;
}

class Matching {
public:
    Matching(const GrowingArray<Entry>& before, const GrowingArray<Entry>& after) : before_{before}, after_{after} {}

    bool run(bool may_move, GrowingArray<size_t>& partners) {
        for (size_t i = 0; i < before_.size(); ++i)
            if (!partners.add(kNoEntry)) return false;
        const bool has_memory = fill(has_number_after_, before_.size()) && fill(has_number_before_, after_.size()) &&
                                fill(is_taken_, after_.size()) && pair_by_numbers() && (!may_move || pair_by_values());
        if (has_memory) choose(partners);
        return has_memory;
    }

private:
    // A pair for each value that both have.
    bool pair_by_values() {
        if (!features_before_.collect(before_) || !features_after_.collect(after_)) return false;
        const Feature* left = features_before_.begin();
        const Feature* right = features_after_.begin();
        while (left != features_before_.end() && right != features_after_.end()) {
            const Feature* const left_end = features_before_.end_of_run(left);
            const Feature* const right_end = features_after_.end_of_run(right);
            if (left->hash == right->hash && !pair_runs(left, left_end, right, right_end)) return false;
            const bool is_left_next = left->hash <= right->hash;
            const bool is_right_next = right->hash <= left->hash;
            if (is_left_next) left = left_end;
            if (is_right_next) right = right_end;
        }
        return true;
    }

    bool pair_runs(const Feature* left, const Feature* left_end, const Feature* right, const Feature* right_end) {
        const unsigned weight = weight_of(static_cast<size_t>(left_end - left), static_cast<size_t>(right_end - right));
        if (weight == 0) return true;
        for (const Feature* i = left; i != left_end; ++i)
            for (const Feature* j = right; j != right_end; ++j)
                if (!pairs_.add({i->entry, j->entry, weight, false})) return false;
        return true;
    }

    // Entries that have nothing in common are the same when they have the same number.
    bool pair_by_numbers() {
        GrowingArray<Numbered> numbers;
        for (size_t i = 0; i < after_.size(); ++i)
            if (!numbers.add({after_[i].number, i})) return false;
        sort(numbers.begin(), numbers.end(),
             [](const Numbered& left, const Numbered& right) { return left.number < right.number; });
        for (size_t i = 0; i < before_.size(); ++i) {
            const uint64_t number = before_[i].number;
            const Numbered* const found = std::partition_point(
                numbers.begin(), numbers.end(), [number](const Numbered& each) { return each.number < number; });
            if (found == numbers.end() || found->number != number) continue;
            has_number_after_[i] = has_number_before_[found->entry] = true;
            if (!pairs_.add({i, found->entry, 0, true})) return false;
        }
        return true;
    }

    // One pair out of all that are of the same two entries.
    void add_up() {
        sort(pairs_.begin(), pairs_.end(), [](const Pair& left, const Pair& right) {
            return left.before != right.before ? left.before < right.before : left.after < right.after;
        });
        size_t kept = 0;
        for (const Pair& pair : pairs_) {
            if (kept != 0 && pairs_[kept - 1].before == pair.before && pairs_[kept - 1].after == pair.after) {
                pairs_[kept - 1].likeness += pair.likeness;
                pairs_[kept - 1].has_same_number |= pair.has_same_number;
            } else {
                pairs_[kept++] = pair;
            }
        }
        pairs_.cut(kept);
    }

    void choose(GrowingArray<size_t>& partners) {
        add_up();
        sort(pairs_.begin(), pairs_.end(), [](const Pair& left, const Pair& right) {
            if (left.likeness != right.likeness) return left.likeness > right.likeness;
            if (left.has_same_number != right.has_same_number) return left.has_same_number;
            return left.before != right.before ? left.before < right.before : left.after < right.after;
        });
        for (const Pair& pair : pairs_) {
            if (partners[pair.before] != kNoEntry || is_taken_[pair.after] || !is_believed(pair)) continue;
            partners[pair.before] = pair.after;
            is_taken_[pair.after] = true;
        }
    }

    // Where both numbers are there before and after, an entry has moved only if most of it has: what two entries have
    // in common may as well have been copied from one to the other.
    bool is_believed(const Pair& pair) const {
        if (pair.has_same_number || !has_number_after_[pair.before] || !has_number_before_[pair.after]) return true;
        const unsigned whole =
            std::max(features_before_.weight_of_entry(pair.before), features_after_.weight_of_entry(pair.after));
        return pair.likeness > whole / 2;
    }

    const GrowingArray<Entry>& before_;
    const GrowingArray<Entry>& after_;
    Features features_before_;
    Features features_after_;
    GrowingArray<Pair> pairs_;
    GrowingArray<bool> has_number_after_;   // of the entries before
    GrowingArray<bool> has_number_before_;  // of the entries after
    GrowingArray<bool> is_taken_;           // of the entries after
};

}  // namespace

uint64_t number_of(std::string_view name) {
    constexpr size_t kMostDigits = 18;
    uint64_t number = 0;
    if (name.empty() || name[0] == '0' || name.size() > kMostDigits) return 0;
    const char* const end = name.data() + name.size();
    const auto [stopped, error] = std::from_chars(name.data(), end, number);
    return stopped == end ? number : 0;
}

bool collect_entries(json_t* list, GrowingArray<Entry>& entries) {
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(list, name, length, value) {
        const uint64_t number = number_of({name, length});
        if (number != 0 && !entries.add({number, {name, length}, value})) return false;
    }
    size_t index;
    json_array_foreach(list, index, value) {
        if (!entries.add({index, {}, value})) return false;
    }
    return true;
}

bool match_entries(const GrowingArray<Entry>& before, const GrowingArray<Entry>& after, bool may_move,
                   GrowingArray<size_t>& partners) {
    return Matching(before, after).run(may_move, partners);
}

}  // namespace kcnvrt::text
