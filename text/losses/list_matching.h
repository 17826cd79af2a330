// list_matching.h: which entries of a list are the same, before and after a way there and back that may have moved
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "growing_array.h"
#include "owned.h"

namespace kcnvrt::text {

// An entry of a numbered list, or an element of an array.
struct Entry {
    uint64_t number;
    std::string_view name;  // of the member, borrowed; empty in an array
    json_t* value;
};

inline constexpr size_t kNoEntry = SIZE_MAX;

// The number that a member's name is, without zeros in front; 0 when it is none.
uint64_t number_of(std::string_view name);

// The members of an object that have numbers for names, in the order in which they stand, or the elements of an array.
// False when memory ends.
bool collect_entries(json_t* list, GrowingArray<Entry>& entries);

// For each entry before, the index of the one after that is most like it, each of which is taken once, or kNoEntry. An
// entry that is as much like another one as like that of its own number is taken for the latter; where none can have
// moved, numbers alone count. False when memory ends.
bool match_entries(const GrowingArray<Entry>& before, const GrowingArray<Entry>& after, bool may_move,
                   GrowingArray<size_t>& partners);

}  // namespace kcnvrt::text
