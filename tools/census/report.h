// A census, to be looked at or read by programs. No value of a configuration is in it.
#pragma once

#include <string>
#include <vector>

#include "census.h"
#include "stream/tally.h"

namespace kcnvrt {

struct Report {
    Tally tally;
    std::vector<Trouble> troubles;
    std::string seconds;
};

// One of the shares that the devices fall into.
struct Share {
    const char* name;   // for people
    const char* label;  // for programs
    std::size_t devices;
};

std::vector<Share> shares_of(const Tally& tally);

std::string table_of(const Report& report);
std::string json_of(const Report& report);
std::string page_of(const Report& report);

// The table's second half, of the places.
std::string places_of(const std::vector<Trouble>& troubles);
// Them as a JSON array.
std::string json_places_of(const std::vector<Trouble>& troubles);

}  // namespace kcnvrt
