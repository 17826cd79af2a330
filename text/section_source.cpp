#include "section_source.h"

#include <k_cnvrt.h>
#include <k_cnvrt_text.h>

#include <algorithm>
#include <iterator>

#include "json/pointer.h"

namespace kcnvrt::text {

namespace {

struct Row {
    std::string_view section;
    std::string_view place;
    std::string_view other_place = {};  // where it is in configurations that do not have it at the first
};

// A section that is not listed is a service.
constexpr std::string_view kServices = "/Device/Services/";

// clang-format off
constexpr Row kToOld[] = {
    // old section       in the new configuration
    {"ifaces",          "/Device/Ifaces"},
    {"netfilter",       "/Device/NetFilter"},
    {"phys_ifaces",     "/Device/Ifaces/phys_ifaces"},
    {"vlan",            "/Device/Vlan"},
    {"dsl_vlan",        "/Device/Vlan"},
    {"wifi",            "/Device/WiFi"},
    {"httpaccess",      "/Device/RemoteAccess"},
    {"users",           "/Device/Users"},
    {"sysusers",        "/Device/Users/sysusers"},
    {"wan_pvid",        "/Device/wan_pvid"},
    {"route",           "/Device/Routing"},
    {"rip",             "/Device/Routing/RIP"},
    {"queuemanagement", "/Device/QoS"},
    {"voip",            "/Device/Voip"},
    {"adsl",            "/Device/Adsl"},
    {"ports_config",    "/Device/Port_settings"},
    {"port_bandwidth",  "/Device/Port_bandwidth"},
    {"Firewall",        "/Device/Firewall"},
    {"Firewall_v6",     "/Device/Firewall_v6"},
    {"default_ssid",    "/Device/Default_ssid"},
    {"igmp",            "/Device/Services/igmpx"},
    {"ipsec",           "/Device/Services/vpn/ipsec"},
};

// A section that is not listed has its name in the old configuration, too.
constexpr Row kToNew[] = {
    // new section       in the old configuration
    {"Ifaces",          "/ifaces"},
    {"NetFilter",       "/netfilter"},
    {"Vlan",            "/vlan"},
    {"DSL_Vlan",        ""},
    {"WiFi",            "/wifi"},
    {"RemoteAccess",    "/httpaccess"},
    {"Users",           "/passwd",        "/users"},
    {"Static",          "/route"},
    {"QoS",             "/qos",           "/queuemanagement"},
    {"Voip",            "/voip"},
    {"Adsl",            "/adsl"},
    {"Port_settings",   "/ports_config"},
    {"Port_bandwidth",  "/port_bandwidth"},
    {"Default_ssid",    "/default_ssid"},
};

// What an old configuration has beside the sources of sections that can be converted alone.
constexpr const char* kOtherOldSections[] = {
    "roaming", "Links", "Scheduler", "SysStatistics", "PKI", "Port_segmentation",
    "udpxy", "rlx_iptv_qos", "DCMS", "hot_wifi", "sla_agent",
};
// clang-format on

template <size_t N>
const Row* find(const Row (&rows)[N], std::string_view section) {
    const Row* const found =
        std::find_if(std::begin(rows), std::end(rows), [section](const Row& row) { return row.section == section; });
    return found == std::end(rows) ? nullptr : found;
}

// Of a section that is not listed the place is `before` and its name.
struct Places {
    const Row* row;
    std::string_view before;
    std::string_view section;

    Places(uint32_t direction, std::string_view name)
        : row{direction == K_TEXT_TO_OLD ? find(kToOld, name) : find(kToNew, name)},
          before{direction == K_TEXT_TO_OLD ? kServices : "/"},
          section{name} {}

    bool append_first(Buffer& place) const {
        return row != nullptr ? place.append(row->place) : place.append(before) && place.append(section);
    }
};

bool is_container(const json_t* value) {
    return json_is_object(value) || json_is_array(value);
}

// How many places of a section the old configuration has with a container.
size_t count_containers(const json_t* configuration, const char* section) {
    const Places places(K_TEXT_TO_NEW, section);
    if (places.row == nullptr) return is_container(json_object_get(configuration, section));
    size_t count = 0;
    for (const std::string_view place : {places.row->place, places.row->other_place}) {
        if (place.empty()) continue;
        const std::string_view name = last_token_of(place);
        count += is_container(json_object_getn(configuration, name.data(), name.size()));
    }
    return count;
}

bool has_two_old_sections(const json_t* configuration) {
    const char* name;
    size_t count = 0;
    for (size_t i = 0; count < 2 && (name = k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, i)) != nullptr; ++i)
        count += count_containers(configuration, name);
    for (const char* each : kOtherOldSections) count += is_container(json_object_get(configuration, each));
    return count >= 2;
}

}  // namespace

bool is_whole_configuration(uint32_t direction, const json_t* text) {
    if (direction == K_TEXT_TO_OLD) return json_is_object(json_object_get(text, "Device"));
    return has_two_old_sections(text);
}

bool is_section(uint32_t direction, std::string_view name) {
    const k_cnvrt_table_t table = direction == K_TEXT_TO_OLD ? K_CNVRT_OLD_SECTIONS : K_CNVRT_NEW_SECTIONS;
    const char* each;
    for (size_t i = 0; (each = k_cnvrt_section_name(table, i)) != nullptr; ++i)
        if (each == name) return true;
    return false;
}

bool find_section_source(uint32_t direction, const char* section, json_t* configuration, Buffer& place,
                         SectionSource& source) {
    const Places places(direction, section);
    if (!places.append_first(place)) return false;
    source.is_all = place.size() == 0;
    source.value = value_at(configuration, place.view());
    if (source.value != nullptr || places.row == nullptr || places.row->other_place.empty()) return true;
    json_t* const other = value_at(configuration, places.row->other_place);
    if (other == nullptr) return true;
    source.value = other;
    place.cut(0);
    return place.append(places.row->other_place);
}

}  // namespace kcnvrt::text
