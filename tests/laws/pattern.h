// pattern.h: which places of a document a row speaks of.
//
//     "wifi/mbssid/*/AuthMode"            any element of "mbssid"
//     "ifaces/[ethernet]/services/[ip]"   members whose "type" is that
//     "vlan/avail_ports|vlans"            either name
//     "ifaces/**/lock"                    at any depth
#pragma once

#include <jansson.h>

#include <string>
#include <vector>

// One step of a path: the name or position, and the value that stands there.
struct Step {
    std::string name;
    json_t* value;
};
using Path = std::vector<Step>;

class Pattern {
public:
    explicit Pattern(const std::string& text);

    bool matches(const Path& path) const;
    // Whether there is a value at the names that it begins with, up to the first that stands for several.
    bool begins_in(json_t* document) const;
    // The pattern without its last step, of which there must be one, and the names of that step.
    Pattern parent() const;
    std::vector<std::string> last_names() const;

private:
    Pattern() = default;

    std::vector<std::string> names_;
};

// Does something at every place, inner ones first, so that what is done may change the containers above.
template <class Visit>
void walk(json_t* value, Path& path, const Visit& visit) {
    const auto step_into = [&](const std::string& name, json_t* member) {
        path.push_back({name, member});
        walk(member, path, visit);
        path.pop_back();
    };
    std::vector<std::pair<std::string, json_t*>> inside;
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) inside.emplace_back(name, member);
    for (size_t i = 0; i < json_array_size(value); ++i)
        inside.emplace_back(std::to_string(i), json_array_get(value, i));
    for (const auto& [inner, inner_value] : inside) step_into(inner, inner_value);
    visit(path, value);
}
