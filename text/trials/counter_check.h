// counter_check.h: what a conversion depends on is found by converting once more with something changed.
#pragma once

#include "basis/tree_memory.h"
#include "owned.h"
#include "result.h"
#include "trials/changed_copy.h"

namespace kcnvrt::text {

// What is converted to what.
struct Way {
    bool is_to_new;
    const char* section;  // null: a whole configuration
    uint8_t flags;        // of the library: K_CNVRT_DSL_VLAN or none

    Way back() const { return {!is_to_new, section, flags}; }
};

// What a conversion came to.
struct Outcome {
    Json tree;  // null where the source is rejected
    Record record;
};

// Whether the trees are equal, and the messages by their texts, their functions and whether they count, as well as the
// lines that were printed. Where messages belong makes no difference.
bool is_same(const Outcome& one, const Outcome& other);

// Conversions of one request, all of them counted.
class CounterCheck {
public:
    CounterCheck(const Way& way, const TreeMemory* memory) : way_{way}, memory_{memory} {}

    // False when memory ends. Neither tree needs the other one to stay.
    bool convert(const Way& way, json_t* source, Outcome& outcome);
    // The same for who has a record.
    json_t* convert(const Way& way, json_t* source, k_err_t* record);
    bool convert(json_t* source, Outcome& outcome);

    // Converts `source`, which is not modified, with those changes, and says whether that comes to something else than
    // `before`. False when memory ends. What is made for it is given back.
    bool convert_changed(json_t* source, GrowingArray<Change>& changes, const Outcome& before, bool& is_changed);

    // While it returns, what is not told a way goes there and back, unless it is rejected there.
    void go_there_and_back(bool returns) { returns_ = returns; }

    const Way& way() const { return way_; }
    const TreeMemory* memory() const { return memory_; }
    size_t conversions() const { return conversions_; }

private:
    Way way_;
    const TreeMemory* memory_;
    size_t conversions_ = 0;
    bool returns_ = false;
};

}  // namespace kcnvrt::text
