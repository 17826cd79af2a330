#include "census.h"

#include <algorithm>

namespace kcnvrt {

namespace {

// Members that nobody knows have names without end. What comes then is counted together.
constexpr std::size_t kMostPlaces = 10000;
constexpr const char* kOtherPlaces = "other places";

}  // namespace

void Census::add(const Finding& finding) {
    std::pair key(finding.kind, finding.place);
    if (counts_.size() >= kMostPlaces && !counts_.contains(key)) key.second = kOtherPlaces;
    Count& count = counts_[key];
    if (count.devices++ == 0) count.example = finding.id;
}

std::vector<Trouble> Census::troubles() const {
    std::vector<Trouble> troubles;
    for (const auto& [key, count] : counts_) troubles.push_back({key.first, key.second, count.devices, count.example});
    std::ranges::stable_sort(troubles, std::ranges::greater(), &Trouble::devices);
    return troubles;
}

}  // namespace kcnvrt
