// Entries are alike by the values that they have in common, and the more so, the fewer entries have such a value: a name
// says more than a switch.
#include "list_matching.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace kcnvrt::text {

namespace {

constexpr uint64_t kHashStart = 14695981039346656037u;  // of FNV-1a
constexpr uint64_t kHashFactor = 1099511628211u;

uint64_t hashed(uint64_t hash, std::string_view bytes) {
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * kHashFactor;
    return hash * kHashFactor;
}

uint64_t hashed(uint64_t hash, json_int_t number) {
    char digits[24];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return hashed(hash, {digits, static_cast<size_t>(end - digits)});
}

// What lies deeper tells no more of an entry, and would be looked at once for each list around it.
constexpr int kDeepest = 3;

// A value somewhere in an entry.
struct Feature {
    uint64_t hash;
    size_t entry;
};

class Features {
public:
    bool collect(const GrowingArray<Entry>& entries) {
        for (size_t i = 0; i < entries.size(); ++i)
            if (!add(entries[i].value, kHashStart, i, 0)) return false;
        std::sort(list_.begin(), list_.end(), [](const Feature& left, const Feature& right) {
            return left.hash != right.hash ? left.hash < right.hash : left.entry < right.entry;
        });
        return true;
    }

    const Feature* begin() const { return list_.begin(); }
    const Feature* end() const { return list_.end(); }

private:
    bool add(json_t* value, uint64_t hash, size_t entry, int level) {
        if (json_is_object(value) || json_is_array(value))
            return level == kDeepest || inside(value, hash, entry, level);
        // A number that comes back as a text is still the same.
        if (json_is_string(value))
            hash = hashed(hash, {json_string_value(value), json_string_length(value)});
        else if (json_is_integer(value))
            hash = hashed(hash, json_integer_value(value));
        else
            hash = hashed(hash, static_cast<json_int_t>(json_typeof(value)));
        return list_.add({hash, entry});
    }

    bool inside(json_t* container, uint64_t hash, size_t entry, int level) {
        const char* name;
        size_t length;
        json_t* value;
        json_object_keylen_foreach(container, name, length, value) {
            if (!add(value, hashed(hash, {name, length}), entry, level + 1)) return false;
        }
        size_t index;
        json_array_foreach(container, index, value) {
            if (!add(value, hashed(hash, static_cast<json_int_t>(index)), entry, level + 1)) return false;
        }
        return true;
    }

    GrowingArray<Feature> list_;
};

// How much one entry before and one after are alike.
struct Pair {
    size_t before;
    size_t after;
    unsigned likeness;
    bool has_same_number;
};

// A value that more pairs than these have in common tells nothing.
constexpr size_t kMostPairs = 16;

const Feature* end_of_run(const Feature* first, const Feature* end) {
    return std::find_if(first, end, [first](const Feature& each) { return each.hash != first->hash; });
}

// A pair for each value that both have.
bool pair_by_values(const Features& before, const Features& after, GrowingArray<Pair>& pairs) {
    const Feature* left = before.begin();
    const Feature* right = after.begin();
    while (left != before.end() && right != after.end()) {
        const Feature* const left_end = end_of_run(left, before.end());
        const Feature* const right_end = end_of_run(right, after.end());
        const auto count = static_cast<size_t>((left_end - left) * (right_end - right));
        if (left->hash == right->hash && count <= kMostPairs) {
            const auto likeness = static_cast<unsigned>(kMostPairs / count);
            for (const Feature* i = left; i != left_end; ++i)
                for (const Feature* j = right; j != right_end; ++j)
                    if (!pairs.add({i->entry, j->entry, likeness, false})) return false;
        }
        const bool is_left_next = left->hash <= right->hash;
        const bool is_right_next = right->hash <= left->hash;
        if (is_left_next) left = left_end;
        if (is_right_next) right = right_end;
    }
    return true;
}

// One pair out of all that are of the same two entries.
void add_up(GrowingArray<Pair>& pairs) {
    std::sort(pairs.begin(), pairs.end(), [](const Pair& left, const Pair& right) {
        return left.before != right.before ? left.before < right.before : left.after < right.after;
    });
    size_t kept = 0;
    for (const Pair& pair : pairs) {
        if (kept != 0 && pairs[kept - 1].before == pair.before && pairs[kept - 1].after == pair.after)
            pairs[kept - 1].likeness += pair.likeness;
        else
            pairs[kept++] = pair;
    }
    pairs.cut(kept);
}

bool is_preferred(const Pair& left, const Pair& right) {
    if (left.likeness != right.likeness) return left.likeness > right.likeness;
    if (left.has_same_number != right.has_same_number) return left.has_same_number;
    return left.before != right.before ? left.before < right.before : left.after < right.after;
}

// Entries that have nothing in common are the same when they have the same number.
bool pair_by_numbers(const GrowingArray<Entry>& before, const GrowingArray<Entry>& after, GrowingArray<Pair>& pairs) {
    GrowingArray<Pair> numbers;  // here an index, and the number in place of the other one
    for (size_t i = 0; i < after.size(); ++i)
        if (!numbers.add({0, i, 0, false})) return false;
    const auto number_of_pair = [&after](const Pair& pair) { return after[pair.after].number; };
    std::sort(numbers.begin(), numbers.end(),
              [=](const Pair& left, const Pair& right) { return number_of_pair(left) < number_of_pair(right); });
    for (size_t i = 0; i < before.size(); ++i) {
        const Pair* const found = std::partition_point(
            numbers.begin(), numbers.end(), [&](const Pair& pair) { return number_of_pair(pair) < before[i].number; });
        if (found == numbers.end() || number_of_pair(*found) != before[i].number) continue;
        if (!pairs.add({i, found->after, 0, true})) return false;
    }
    return true;
}

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

bool match_entries(const GrowingArray<Entry>& before, const GrowingArray<Entry>& after,
                   GrowingArray<size_t>& partners) {
    Features features_before;
    Features features_after;
    GrowingArray<Pair> pairs;
    GrowingArray<bool> is_taken;
    for (size_t i = 0; i < before.size(); ++i)
        if (!partners.add(kNoEntry)) return false;
    for (size_t i = 0; i < after.size(); ++i)
        if (!is_taken.add(false)) return false;
    const bool has_memory = features_before.collect(before) && features_after.collect(after) &&
                            pair_by_values(features_before, features_after, pairs) &&
                            pair_by_numbers(before, after, pairs);
    if (!has_memory) return false;
    add_up(pairs);
    for (Pair& pair : pairs) pair.has_same_number = before[pair.before].number == after[pair.after].number;
    std::sort(pairs.begin(), pairs.end(), is_preferred);
    for (const Pair& pair : pairs) {
        if (partners[pair.before] != kNoEntry || is_taken[pair.after]) continue;
        partners[pair.before] = pair.after;
        is_taken[pair.after] = true;
    }
    return true;
}

}  // namespace kcnvrt::text
