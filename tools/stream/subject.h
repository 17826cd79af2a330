// What a run goes through.
#pragma once

#include <cstddef>

namespace kcnvrt {

struct Subject {
    // What there will be in the end; 0 where it is not known.
    std::size_t bytes = 0;
    std::size_t records = 0;
    bool has_losses = false;  // they are looked for
    // Its words for people.
    const char* one = "record";
    const char* many = "records";
    const char* good = "converted";
};

}  // namespace kcnvrt
