// k_conf_pointer.h: JSON Pointers (RFC 6901), written while a tree is walked and read while one is changed.
//
// "" is the document; every name on the way down follows a "/", with "~" written "~0" and "/" written "~1".
#pragma once

#include <jansson.h>

#include <cstddef>
#include <string_view>

#include "growing_array.h"
#include "owned.h"

namespace kcnvrt::conf {

// The pointer to where a walk stands.
class PointerWriter {
public:
    // One step down. False when memory runs out.
    bool push(std::string_view name);
    bool push(size_t index);

    size_t length() const { return text_.size(); }
    // Never a null text, which Jansson would take for none at all.
    std::string_view view() const { return {length() == 0 ? "" : text_.data(), length()}; }

    // Back up to where the pointer had this length.
    void cut(size_t length) { text_.cut(length); }

private:
    GrowingArray<char> text_;
};

// A pointer taken apart into its names. Borrows nothing.
class Pointer {
public:
    // Null, or why `text` cannot be read.
    const char* read(std::string_view text);

    // 0 names are the document itself.
    size_t size() const { return size_; }
    std::string_view name(size_t at) const { return names_.get()[at]; }
    std::string_view last() const { return name(size_ - 1); }

    // Leads to something inside what `other` leads to.
    bool is_inside(const Pointer& other) const;

private:
    Allocated<std::string_view> names_;
    size_t size_ = 0;
};

// The index of an array element, written without leading zeros. False for any other name.
bool read_index(std::string_view name, size_t* index);

// What a container has under a name, or null.
json_t* child(json_t* container, std::string_view name);

}  // namespace kcnvrt::conf
