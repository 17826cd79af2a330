#include "mapping.h"

#include <algorithm>
#include <map>

namespace kcnvrt {

namespace {

using enum Layout;

// Sections that are converted alone under another name than the one they have in a configuration.
const std::map<std::string, std::string>& other_names() {
    static const std::map<std::string, std::string> names = {
        {"Static", "route"}, {"DSL_Vlan", "groups"}, {"dsl_vlan", "groups"}};
    return names;
}

void add_once(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

std::vector<std::string> sections_of(const LayoutLine& line, Layout layout) {
    std::vector<std::string> sections;
    for (const std::string& place : line.places(layout))
        for (const std::string& name : kcnvrt::sections_of(place)) add_once(sections, name);
    return sections;
}

bool has(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The old section that most lines pair with these new ones; the first of these where none does.
std::string old_section_beside(const std::vector<std::string>& new_sections, const Layouts& layouts) {
    std::map<std::string, std::size_t> votes;
    for (const LayoutLine& line : layouts.lines())
        if (sections_of(line, kNew) == new_sections)
            for (const std::string& name : sections_of(line, kOld)) ++votes[name];
    const auto by_votes = [](const auto& a, const auto& b) { return a.second < b.second; };
    const auto most = std::max_element(votes.begin(), votes.end(), by_votes);
    return most == votes.end() ? new_sections.front() : most->first;
}

// The line's own old section, or the old one that goes with its new one.
std::string page_of(const LayoutLine& line, const Layouts& layouts) {
    const auto old_sections = sections_of(line, kOld);
    return old_sections.empty() ? old_section_beside(sections_of(line, kNew), layouts) : old_sections.front();
}

}  // namespace

std::vector<MappingPage> mapping_pages(const Layouts& layouts) {
    std::vector<MappingPage> pages;
    for (const LayoutLine& line : layouts.lines()) {
        const std::string name = page_of(line, layouts);
        auto page = std::find_if(pages.begin(), pages.end(), [&](const MappingPage& one) { return one.name == name; });
        if (page == pages.end()) page = pages.insert(pages.end(), {name, {}});
        page->lines.push_back(&line);
    }
    return pages;
}

std::string page_of_place(const Layouts& layouts, const std::string& place, Layout layout) {
    const auto sections = kcnvrt::sections_of(place);
    if (sections.empty()) return "";
    return layout == kOld ? sections.front() : old_section_beside(sections, layouts);
}

std::vector<std::string> section_names(const Layouts& layouts) {
    std::vector<std::string> names;
    for (const LayoutLine& line : layouts.lines())
        for (const Layout layout : {kOld, kNew})
            for (const std::string& name : sections_of(line, layout)) add_once(names, name);
    for (const auto& [other, name] : other_names()) names.push_back(other);
    return names;
}

std::vector<const LayoutLine*> lines_of_section(const Layouts& layouts, const std::string& name) {
    const auto known = other_names().find(name);
    const std::string& wanted = known == other_names().end() ? name : known->second;
    std::vector<const LayoutLine*> lines;
    for (const LayoutLine& line : layouts.lines())
        if (has(sections_of(line, kOld), wanted) || has(sections_of(line, kNew), wanted)) lines.push_back(&line);
    return lines;
}

namespace {

// The name of the section that a pointer leads into, "" for none.
std::string section_at(const Steps& names) {
    const auto sections = kcnvrt::sections_of(place_of(names));
    return sections.empty() || names == Steps{"Device"} ? "" : sections.front();
}

bool is_below(const Steps& names, const Steps& container) {
    if (names.size() <= container.size()) return false;
    const Steps above(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(container.size()));
    return match(above, place_of(container)) == Match::kExact;
}

// Whether the innermost container that is known above these names carries what it does not know.
bool is_carried(const Layouts& layouts, const Steps& names) {
    std::size_t depth = 0;
    bool is_carried = false;
    for (const Layout layout : {kOld, kNew})
        for (const LayoutContainer& container : layouts.containers(layout)) {
            const Steps steps = steps_of(container.place);
            if (steps.size() < depth || !is_below(names, steps)) continue;
            is_carried = container.carries_others || (is_carried && steps.size() == depth);
            depth = steps.size();
        }
    return is_carried;
}

}  // namespace

AtPointer lines_at(const Layouts& layouts, const Steps& names) {
    AtPointer found;
    const std::string section = section_at(names);
    const auto look_at = [&](const std::string& place, const LayoutLine& line) {
        const Match how = match(names, place);
        if (how != Match::kNone && (found.lines.empty() || found.lines.back() != &line)) found.lines.push_back(&line);
        found.is_exact = found.is_exact || how == Match::kExact || how == Match::kBelow;
        found.is_in_section = found.is_in_section || has(kcnvrt::sections_of(place), section);
    };
    for (const LayoutLine& line : layouts.lines())
        for (const Layout layout : {kOld, kNew})
            for (const std::string& place : line.places(layout))
                // What is chosen has lines of its own.
                if (line.kind() != "chooses" || line.behaviour(layout) != nullptr) look_at(place, line);
    found.is_carried = found.lines.empty() && is_carried(layouts, names);
    return found;
}

std::vector<std::string> names_beside(const Layouts& layouts, const Steps& names) {
    std::vector<std::string> beside;
    if (names.empty()) return beside;
    const Steps above(names.begin(), names.end() - 1);
    for (const LayoutLine& line : layouts.lines())
        for (const Layout layout : {kOld, kNew})
            for (const std::string& place : plain_places(line.places(layout))) {
                const Steps steps = steps_of(place);
                if (steps.size() <= above.size() || match(above, place) == Match::kNone) continue;
                if (steps[above.size()].front() != '*') add_once(beside, steps[above.size()]);
            }
    return beside;
}

}  // namespace kcnvrt
