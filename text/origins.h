// origins.h: where things stood at first in a tree out of which elements are taken.
#pragma once

#include <string_view>

#include "basis/buffer.h"
#include "owned.h"

namespace kcnvrt::text {

// Keeps a list of indexes for each array that has lost an element.
class Origins {
public:
    Origins() : lists_{json_object()} {}

    // False when memory ends.
    bool take_out(json_t* array, size_t index);

    // Appends the pointer that a value had at first, which is now at `pointer` of the tree. False when memory ends.
    bool append_first_pointer(json_t* root, std::string_view pointer, Buffer& original) const;

private:
    json_t* list_of(const json_t* array);
    bool append_origin(const json_t* value, std::string_view token, Buffer& original) const;

    Json lists_;
};

}  // namespace kcnvrt::text
