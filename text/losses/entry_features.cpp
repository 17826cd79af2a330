#include "losses/entry_features.h"

#include <algorithm>
#include <charconv>

#include "basis/sort.h"

namespace kcnvrt::text {

namespace {

constexpr uint64_t kHashStart = 14695981039346656037u;  // of FNV-1a
constexpr uint64_t kHashFactor = 1099511628211u;

// What lies deeper tells no more of an entry, and would be looked at once for each list around it.
constexpr int kDeepest = 3;

uint64_t hashed(uint64_t hash, std::string_view bytes) {
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * kHashFactor;
    return hash * kHashFactor;
}

uint64_t hashed(uint64_t hash, json_int_t number) {
    char digits[24];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return hashed(hash, {digits, static_cast<size_t>(end - digits)});
}

// A number that comes back as a text is still the same.
uint64_t hashed(uint64_t hash, const json_t* leaf) {
    if (json_is_string(leaf)) return hashed(hash, {json_string_value(leaf), json_string_length(leaf)});
    if (json_is_integer(leaf)) return hashed(hash, json_integer_value(leaf));
    return hashed(hash, static_cast<json_int_t>(json_typeof(leaf)));
}

}  // namespace

bool Features::collect(const GrowingArray<Entry>& entries) {
    for (size_t i = 0; i < entries.size(); ++i)
        if (!weights_.add(0) || !add(entries[i].value, kHashStart, i, 0)) return false;
    sort(list_.begin(), list_.end(), [](const Feature& left, const Feature& right) {
        return left.hash != right.hash ? left.hash < right.hash : left.entry < right.entry;
    });
    for (const Feature* run = begin(); run != end();) {
        const Feature* const run_end = end_of_run(run);
        const auto count = static_cast<size_t>(run_end - run);
        for (; run != run_end; ++run) weights_[run->entry] += weight_of(count, count);
    }
    return true;
}

const Feature* Features::end_of_run(const Feature* first) const {
    return std::find_if(first, end(), [first](const Feature& each) { return each.hash != first->hash; });
}

bool Features::add(json_t* value, uint64_t hash, size_t entry, int level) {
    if (json_is_object(value) || json_is_array(value))
        return level == kDeepest || add_inside(value, hash, entry, level + 1);
    return list_.add({hashed(hash, value), entry});
}

bool Features::add_inside(json_t* container, uint64_t hash, size_t entry, int level) {
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(container, name, length, value) {
        if (!add(value, hashed(hash, {name, length}), entry, level)) return false;
    }
    size_t index;
    json_array_foreach(container, index, value) {
        if (!add(value, hashed(hash, static_cast<json_int_t>(index)), entry, level)) return false;
    }
    return true;
}

}  // namespace kcnvrt::text
