// k_err_record.h: what an error record is made of.
//
// While a conversion runs, the place of a message is a pair: an object of the source, borrowed, and the name of a
// member that need not be there. Locating makes a node of the object, the end of a chain of names up to the root, which
// needs the source no more. The text of a pointer is only written when it is asked for.
#pragma once

#include <cstddef>
#include <cstdint>

#include "growing_array.h"
#include "k_err.h"

namespace kcnvrt {

constexpr size_t kNone = SIZE_MAX;

// Among the names of the record, where they stand one after another.
struct NameAt {
    size_t start = kNone;  // kNone: there is no name, the object itself is meant
    size_t length = 0;
};

struct Place {
    const json_t* object;  // null once it is located
    NameAt name;
    size_t node;  // kNone: nowhere
};

// A container on the way from the root to a place. The root has no parent.
struct Node {
    size_t parent;
    NameAt name;
};

// One message, in one allocation: the texts follow, "function\0message\0".
struct Message {
    int line;
    bool is_counted;
    size_t text_at;
    size_t place;
    char* pointer;  // once it has been asked for

    char* texts() { return reinterpret_cast<char*>(this + 1); }
    const char* function() const { return reinterpret_cast<const char*>(this + 1); }
    const char* text() const { return function() + text_at; }
};

uint32_t failed_allocations();

}  // namespace kcnvrt

struct k_err {
    kcnvrt::GrowingArray<kcnvrt::Message*> messages;
    kcnvrt::GrowingArray<kcnvrt::Place> places;
    kcnvrt::GrowingArray<kcnvrt::Node> nodes;
    kcnvrt::GrowingArray<char> names;
    kcnvrt::GrowingArray<char*> printed;
    size_t settled = 0;  // so many messages have their place; the others wait for one
    uint32_t failed_before = kcnvrt::failed_allocations();
    bool keeps_printed = false;

    // Copies a name; a null one is none. False when memory runs out.
    bool add_name(const char* name, size_t length, kcnvrt::NameAt& added);
};
