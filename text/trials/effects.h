// effects.h: where two results of a conversion differ.
#pragma once

#include "basis/buffer.h"
#include "growing_array.h"
#include "owned.h"
#include "result.h"

namespace kcnvrt::text {

// Whether the name of a member is the number of an entry in a numbered list.
bool is_entry_name(std::string_view name);

// The outermost places where something is in one of two results and not in the other, and the innermost where something
// else is. In a list that has more entries in one of them, whose numbers say less, an entry is compared as a whole.
class Effects {
public:
    // Either may be null. False when memory ends.
    bool find(json_t* with, json_t* without);

    // They live as long as this.
    const GrowingArray<const char*>& pointers() const { return pointers_; }

private:
    bool compare(json_t* with, json_t* without, bool is_whole);
    bool compare_members(json_t* with, json_t* without);
    bool compare_elements(json_t* with, json_t* without);
    bool compare_at(std::string_view name, json_t* with, json_t* without, bool is_whole);

    Buffer path_;
    KeptTexts texts_;
    GrowingArray<const char*> pointers_;
};

}  // namespace kcnvrt::text
