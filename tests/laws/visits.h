// visits.h: what generated documents had in them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

// By field the branches that documents took there: "absent", "present", a value, a length.
class Visits {
public:
    void add(const std::string& field, const std::string& branch) { branches_[field].insert(branch); }
    // What the other has and this one lacks.
    std::vector<std::string> missing_of(const Visits& other) const;

    size_t fields() const { return branches_.size(); }
    size_t branches() const;

private:
    std::map<std::string, std::set<std::string>> branches_;
};
