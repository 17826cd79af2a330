// outer_lists.h: which lists of a configuration grow, and what tells their entries apart.
#pragma once

#include <span>

namespace kcnvrt::bench {

enum class Layout { kOld, kNew };

// A list is an array, a numbered list (an object with "max_instance") or an object keyed by names.
struct OuterList {
    const char* path;                // from the root; "*" is every member
    const char* distinct = nullptr;  // the member that no two entries may share: a copy's text or number is another
};

std::span<const OuterList> outer_lists(Layout layout);

}  // namespace kcnvrt::bench
