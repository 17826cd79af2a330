// leaves.h: the values in a tree that hold no others.
#pragma once

#include "basis/buffer.h"
#include "growing_array.h"
#include "owned.h"
#include "result.h"

namespace kcnvrt::text {

// A value of a document, and its place.
struct Piece {
    std::string_view pointer;
    json_t* value;
};

// Anything but an object with members or an array with elements.
struct Leaf {
    std::string_view pointer;
    json_t* value;
    bool is_used;  // the conversion depends on it
};

bool is_leaf(const json_t* value);

// The leaves of several pieces, of which none is inside another: one piece after the other, in the order in which a
// walk over Jansson's ranges meets them.
class Leaves {
public:
    // False when memory ends.
    bool add(const Piece& piece);
    bool sort();

    size_t size() const { return leaves_.size(); }
    Leaf& operator[](size_t index) { return leaves_[index]; }
    const Leaf& operator[](size_t index) const { return leaves_[index]; }

    // Marks it as used; whether it was not yet.
    bool mark(size_t index);
    // The same of the leaf there, if there is one. They have to be sorted.
    bool mark_at(std::string_view pointer);

private:
    bool add_value(json_t* value);
    bool add_child(std::string_view name, json_t* value);

    Buffer path_;
    KeptTexts pointers_;
    GrowingArray<Leaf> leaves_;
    GrowingArray<size_t> sorted_;  // by their pointers
};

}  // namespace kcnvrt::text
