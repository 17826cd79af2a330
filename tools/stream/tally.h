// How many records came, and what became of them.
#pragma once

#include <cstddef>

namespace kcnvrt {

struct Tally {
    std::size_t records = 0;
    std::size_t converted = 0;
    std::size_t warned = 0;    // of those that were converted
    std::size_t lossy = 0;     // of those that were converted; 0 where losses are not looked for
    std::size_t troubled = 0;  // warned or lossy
    std::size_t rejected = 0;
    std::size_t bytes = 0;  // of input
    std::size_t left = 0;   // files that were done already, and are no records

    Tally& operator+=(const Tally& other) {
        records += other.records;
        converted += other.converted;
        warned += other.warned;
        lossy += other.lossy;
        troubled += other.troubled;
        rejected += other.rejected;
        bytes += other.bytes;
        left += other.left;
        return *this;
    }
};

}  // namespace kcnvrt
