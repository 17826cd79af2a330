// The sections that are converted alone, by their names in either layout, and the two tables that are made of their
// list.
#include "document/sections.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "services/service_list.h"

namespace kcnvrt {

namespace {

using enum Container;

struct Section {
    Name old_name = "";  // "" where the old layout, or the new one, has no such section
    Name new_name = "";
    k_cnvrt_handler_t to_old = nullptr;
    k_cnvrt_handler_t to_new = nullptr;
    Container old_container = kObject;
};

constexpr Section copied(Name old_name, Name new_name) {
    return {old_name, new_name, json_section_copy, json_section_copy};
}
constexpr Section copied(Name name) {
    return copied(name, name);
}

// clang-format off
constexpr Section kSections[] = {
    // old               new               to old                                to new
    {"ifaces",          "Ifaces",         k_cnvrt_get_sections_ifaces_from_new, k_cnvrt_get_sections_ifaces_from_old},
    copied("netfilter", "NetFilter"),
    {"phys_ifaces",     "phys_ifaces",    k_cnvrt_parse_new_phys,               k_cnvrt_parse_old_phys_ifaces},
    {"",                "sysusers",       nullptr,                              k_cnvrt_get_sysusers_from_old},
    {"vlan",            "Vlan",           k_cnvrt_get_vlan_from_new,            k_cnvrt_get_vlan_from_old},
    {"dsl_vlan",        "DSL_Vlan",       k_cnvrt_get_vlan_dsl_from_new,        k_cnvrt_get_vlan_dsl_from_old},
    {"wifi",            "WiFi",           k_cnvrt_get_wifi_from_new,            k_cnvrt_get_wifi_from_old},
    {"httpaccess",      "RemoteAccess",   k_cnvrt_get_remote_from_new,          k_cnvrt_get_remote_from_old,   kArray},
    {"users",           "Users",          k_cnvrt_get_users_from_new,           k_cnvrt_get_users_from_old,    kEither},
    {"sysusers",        "",               k_cnvrt_get_sysusers_from_new,        nullptr,                       kArray},
    {"wan_pvid",        "wan_pvid",       k_cnvrt_get_wan_pvid_from_new,        k_cnvrt_get_wan_pvid_from_old},
    {"route",           "Static",         k_cnvrt_get_route_from_new,           k_cnvrt_get_route_from_old,    kArray},
    {"rip",             "rip",            k_cnvrt_get_rip_from_new,             k_cnvrt_get_rip_from_old},
    {"queuemanagement", "QoS",            k_cnvrt_get_qos_from_new,             k_cnvrt_get_qos_from_old},
    {"voip",            "Voip",           k_cnvrt_get_voip_from_new,            k_cnvrt_get_voip_from_old},
    copied("adsl",      "Adsl"),
    {"ports_config",    "Port_settings",  k_cnvrt_get_port_settings_from_new,   k_cnvrt_get_port_settings_from_old},
    {"port_bandwidth",  "Port_bandwidth", k_cnvrt_get_port_bandwidth_from_new,  k_cnvrt_get_port_bandwidth_from_old},
    copied("Firewall"),
    copied("Firewall_v6"),
    {"default_ssid",    "Default_ssid",   k_cnvtr_get_default_ssid_from_new,    k_cnvtr_get_default_ssid_from_old},
    // The services come next, in the order of their names.
};
// clang-format on

// A service is called by its old name in either layout. What "Services" carries is copied here.
constexpr Section section_of(const service_list::Service& service) {
    using service_list::Conversion;
    return {service.by_name == service_list::kBoth ? service.old_name : "", service.old_name,
            service.conversion == Conversion::kBothWays ? service.to_old : json_section_copy,
            service.conversion == Conversion::kNone ? json_section_copy : service.to_new, service.old_container};
}

constexpr bool has_section(const service_list::Service& service) {
    return service.by_name != service_list::kNone;
}

constexpr auto kAllSections = [] {
    constexpr size_t kServices =
        std::count_if(std::begin(service_list::kServices), std::end(service_list::kServices), has_section);
    std::array<Section, std::size(kSections) + kServices> all{};
    Section* end = std::copy(std::begin(kSections), std::end(kSections), all.data());
    Section* const services = end;
    for (const auto& service : service_list::kServices)
        if (has_section(service)) *end++ = section_of(service);
    std::sort(services, end, [](const Section& a, const Section& b) { return a.new_name.view() < b.new_name.view(); });
    return all;
}();

constexpr OldSection old_row(const Section& listed) {
    return section(listed.old_name, listed.to_old, listed.old_container);
}
constexpr NewSection new_row(const Section& listed) {
    return section(listed.new_name, listed.to_new);
}

// The rows of the sections that the layout has.
template <Name Section::*name, auto row_of>
constexpr auto table_of_sections() {
    constexpr auto kHas = [](const Section& section) { return !(section.*name).is_empty(); };
    constexpr size_t kCount = std::count_if(kAllSections.begin(), kAllSections.end(), kHas);
    std::array<decltype(row_of(kAllSections[0])), kCount + 1> table{};
    auto* row = table.data();
    for (const Section& section : kAllSections)
        if (kHas(section)) *row++ = row_of(section);
    return table;
}

constinit const auto kOldTable = table_of_sections<&Section::old_name, old_row>();
constinit const auto kNewTable = table_of_sections<&Section::new_name, new_row>();

}  // namespace

constinit const OldSection* const old_config_handler_table = kOldTable.data();
constinit const NewSection* const new_config_handler_table = kNewTable.data();

}  // namespace kcnvrt
