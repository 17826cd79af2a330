#include "finding.h"

#include <algorithm>

namespace describe {

namespace {

// Of each type the values that are not reported.
std::string what_is_taken(const Finding& finding) {
    std::string taken;
    size_t position;
    json_t* said;
    json_array_foreach(finding.behaviour.get(), position, said) {
        json_t* const takes = json_object_get(said, "takes");
        size_t number;
        json_t* type;
        json_array_foreach(json_object_get(said, "of"), number, type) if (takes != nullptr) taken +=
            json_string_value(type) + text_of(takes);
    }
    return taken;
}

}  // namespace

void add_once(std::vector<std::string>& places, const std::string& place) {
    if (std::find(places.begin(), places.end(), place) == places.end()) places.push_back(place);
}

void keep(Finding finding, std::vector<Finding>& findings) {
    const auto is_another_form = [&](const Finding& one) {
        const auto is_result = [&](const std::string& place) {
            return std::find(one.results.begin(), one.results.end(), place) != one.results.end();
        };
        if (json_equal(one.behaviour.get(), finding.behaviour.get()) != 0) return false;
        const bool takes_others = what_is_taken(one) != what_is_taken(finding);
        const bool leads_elsewhere = std::none_of(finding.results.begin(), finding.results.end(), is_result);
        return takes_others || (leads_elsewhere && !one.is_dropped && !finding.is_dropped);
    };
    const auto known = std::find_if(findings.begin(), findings.end(), [&](const Finding& one) {
        return one.place == finding.place && one.container == finding.container && !is_another_form(one);
    });
    if (known == findings.end()) {
        findings.push_back(std::move(finding));
    } else if (known->is_dropped && !finding.is_dropped) {
        *known = std::move(finding);
    } else if (!finding.container.empty()) {
        if (known->entries == nullptr) known->entries = std::move(finding.entries);
    } else if (!finding.is_selector && !known->is_selector) {
        for (const std::string& place : finding.results) add_once(known->results, place);
    }
}

void add_results(const Finding& finding, std::vector<Finding>& findings) {
    const auto known = std::find_if(findings.begin(), findings.end(), [&](const Finding& one) {
        const bool has_places = !one.is_dropped && !one.is_name && !one.is_selector;
        return one.place == finding.place && one.container.empty() && has_places;
    });
    if (known == findings.end() || finding.results.size() > known->results.size()) return;
    for (const std::string& place : finding.results) add_once(known->results, place);
}

}  // namespace describe
