// entry_features.h: by what the entries of a list are told apart.
#pragma once

#include <cstddef>
#include <cstdint>

#include "growing_array.h"
#include "losses/list_matching.h"

namespace kcnvrt::text {

// A value somewhere in an entry, with the names that lead to it.
struct Feature {
    uint64_t hash;
    size_t entry;
};

// What a value tells that `before` entries of one list have and `after` of the other: the more, the fewer they are; 0
// when they are many.
constexpr unsigned weight_of(size_t before, size_t after) {
    constexpr size_t kMostPairs = 16;
    return before * after > kMostPairs ? 0 : static_cast<unsigned>(kMostPairs / (before * after));
}

// The features of all entries, by their hashes.
class Features {
public:
    // False when memory ends.
    bool collect(const GrowingArray<Entry>& entries);

    const Feature* begin() const { return list_.begin(); }
    const Feature* end() const { return list_.end(); }

    // The end of those that are the same as `first`, with which they begin.
    const Feature* end_of_run(const Feature* first) const;

    // What all values of an entry tell together.
    unsigned weight_of_entry(size_t entry) const { return weights_[entry]; }

private:
    bool add(json_t* value, uint64_t hash, size_t entry, int level);
    bool add_inside(json_t* container, uint64_t hash, size_t entry, int level);

    GrowingArray<Feature> list_;
    GrowingArray<unsigned> weights_;
};

}  // namespace kcnvrt::text
