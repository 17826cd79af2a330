// What one set of visits lacks of another.
#include "visits.h"

std::vector<std::string> Visits::missing_of(const Visits& other) const {
    std::vector<std::string> missing;
    for (const auto& [field, branches] : other.branches_)
        for (const std::string& branch : branches) {
            const auto own = branches_.find(field);
            if (own == branches_.end() || own->second.count(branch) == 0) missing.push_back(field + ": " + branch);
        }
    return missing;
}

size_t Visits::branches() const {
    size_t count = 0;
    for (const auto& [field, branches] : branches_) count += branches.size();
    return count;
}
