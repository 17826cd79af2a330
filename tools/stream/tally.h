// How many records came, and what became of them.
#pragma once

#include <cstddef>

namespace kcnvrt {

struct Tally {
    std::size_t records = 0;
    std::size_t converted = 0;
    std::size_t warned = 0;  // of those that were converted
    std::size_t rejected = 0;
    std::size_t bytes = 0;  // of input

    Tally& operator+=(const Tally& other) {
        records += other.records;
        converted += other.converted;
        warned += other.warned;
        rejected += other.rejected;
        bytes += other.bytes;
        return *this;
    }
};

}  // namespace kcnvrt
