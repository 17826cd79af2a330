// A section has its name in the configuration, but for those of this list.
#include "section_place.h"

#include <algorithm>

#include "places.h"

namespace kcnvrt {

namespace {

using enum Layout;

struct Row {
    Layout layout;
    const char* name;
    SectionPlace place;
};

const std::vector<Row>& rows() {
    static const std::vector<Row> all = {
        {kOld, "dsl_vlan", {"/groups", {}}},
        {kNew, "DSL_Vlan", {"/Device/Vlan", {}}},
        {kNew, "Static", {"/Device/Routing", {"ipv4", "ipv6"}}},
        {kNew, "rip", {"/Device/Routing/RIP", {}}},
        {kNew, "dns6", {"/Device/Services/dns", {"ipv6"}}},
        {kNew, "igmp", {"/Device/Services/igmpx", {}}},
        {kNew, "ipsec", {"/Device/Services/vpn/ipsec", {}}},
    };
    return all;
}

}  // namespace

std::optional<SectionPlace> place_of_section(const PlaceNode& root, Layout layout, const std::string& name) {
    const auto is_it = [&](const Row& row) { return row.layout == layout && name == row.name; };
    const auto row = std::find_if(rows().begin(), rows().end(), is_it);
    if (row != rows().end()) return row->place;
    // The outermost member of that name, at most as deep as services are.
    std::vector<std::pair<std::string, const PlaceNode*>> level{{"", &root}};
    for (int depth = 0; depth < 3; ++depth) {
        std::vector<std::pair<std::string, const PlaceNode*>> next;
        for (const auto& [place, node] : level)
            for (const auto& inner : node->inner) {
                next.emplace_back(place + "/" + inner->step, inner.get());
                if (inner->step == name) return SectionPlace{next.back().first, {}};
            }
        level = std::move(next);
    }
    return std::nullopt;
}

}  // namespace kcnvrt
