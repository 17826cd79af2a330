// The whole configurations at each scale, and each section of them by name.
#include "subjects.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "k_cnvrt.h"
#include "k_conf.h"
#include "scaled_example.h"

namespace kcnvrt::bench {

namespace {

constexpr unsigned kScales[] = {1, 10, 100};
constexpr unsigned kSectionScale = 10;

// Where a section's source lies: that of an old section in the new layout, that of a new section in the old layout.
struct Place {
    std::string_view section;
    const char* source;
};

constexpr Place kSourcesOfOldSections[] = {
    {"ifaces", "Device.Ifaces"},
    {"netfilter", "Device.NetFilter"},
    {"phys_ifaces", "Device.Ifaces.phys_ifaces"},
    {"vlan", "Device.Vlan"},
    {"dsl_vlan", "Device.Vlan"},
    {"wifi", "Device.WiFi"},
    {"httpaccess", "Device.RemoteAccess"},
    {"users", "Device.Users"},
    {"sysusers", "Device.Users.sysusers"},
    {"wan_pvid", "Device.wan_pvid"},
    {"route", "Device.Routing"},
    {"rip", "Device.Routing.RIP"},
    {"queuemanagement", "Device.QoS"},
    {"voip", "Device.Voip"},
    {"adsl", "Device.Adsl"},
    {"ports_config", "Device.Port_settings"},
    {"port_bandwidth", "Device.Port_bandwidth"},
    {"Firewall", "Device.Firewall"},
    {"Firewall_v6", "Device.Firewall_v6"},
    {"default_ssid", "Device.Default_ssid"},
    {"dns", "Device.Services.dns"},
    {"igmp", "Device.Services.igmpx"},
    {"ipsec", "Device.Services.vpn.ipsec"},
};

constexpr Place kSourcesOfNewSections[] = {
    {"Ifaces", "ifaces"},
    {"NetFilter", "netfilter"},
    {"Vlan", "vlan"},
    {"DSL_Vlan", ""},
    {"WiFi", "wifi"},
    {"RemoteAccess", "httpaccess"},
    {"Users", "passwd"},
    {"Static", "route"},
    {"QoS", "queuemanagement"},
    {"Voip", "voip"},
    {"Adsl", "adsl"},
    {"Port_settings", "ports_config"},
    {"Port_bandwidth", "port_bandwidth"},
    {"Default_ssid", "default_ssid"},
};

// The services that no row names lie under their own names.
std::string source_of(std::string_view section, Layout from) {
    const auto find = [section](const auto& places, const char* elsewhere) {
        for (const Place& place : places)
            if (place.section == section) return std::string{place.source};
        return elsewhere + std::string{section};
    };
    return from == Layout::kNew ? find(kSourcesOfOldSections, "Device.Services.") : find(kSourcesOfNewSections, "");
}

[[noreturn]] void give_up(const std::string& what, const char* why) {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), why);
    std::exit(EXIT_FAILURE);
}

Json read(const std::string& file) {
    json_error_t error;
    Json value{json_load_file(file.c_str(), JSON_REJECT_DUPLICATES, &error)};
    if (value == nullptr) give_up(file, error.text);
    return value;
}

// Groups that the example home, which has no DSL VLANs, does not have. Without that flag nobody reads them.
constexpr char kDslGroups[] = R"({
    "br0": {"name": "LAN", "wans": [], "lans": ["Port1", "Port2", "Port3", "wlan0", "wlan1"],
            "type": "L2", "nat": false},
    "ppp0": {"name": "Internet", "wans": ["ppp0"], "lans": [], "type": "L3", "nat": true},
    "ip1": {"name": "IPTV", "wans": ["ip1"], "lans": ["Port4"], "type": "L2", "nat": false}
})";

const char* direction(Layout from) {
    return from == Layout::kOld ? "to-new" : "to-old";
}

}  // namespace

Json configuration(Layout layout, unsigned scale) {
    const bool is_old = layout == Layout::kOld;
    Json example = read(std::string{KCNVRT_EXAMPLES "/home-gateway."} + (is_old ? "old" : "new") + ".json");
    if (is_old) json_object_set_new(example.get(), "groups", json_loads(kDslGroups, 0, nullptr));
    return scaled_example(example.get(), layout, scale);
}

Json Subject::convert() const {
    k_err_t* const err = k_err_new();
    json_t* result = nullptr;
    if (section == nullptr)
        result =
            from == Layout::kOld ? k_cnvrt_to_new(source, nullptr, flags, err) : k_cnvrt_to_old(source, flags, err);
    else
        result = from == Layout::kOld ? k_cnvrt_get_section_to_new(section, source, nullptr, flags, err)
                                      : k_cnvrt_get_section_to_old(section, source, err);
    if (result == nullptr || k_err_count(err) != 0)
        give_up(label, k_err_count(err) == 0 ? "no result" : k_err_message(err, 0));
    k_err_free(err);
    return Json{result};
}

Subjects::Subjects(unsigned largest_scale) {
    for (const Layout from : {Layout::kOld, Layout::kNew})
        for (const unsigned scale : kScales)
            if (scale <= largest_scale) add_configuration(from, scale);
}

void Subjects::add_configuration(Layout from, unsigned scale) {
    roots_.push_back(configuration(from, scale));
    json_t* const root = roots_.back().get();
    for (const uint8_t flags : {uint8_t{0}, K_CNVRT_DSL_VLAN}) {
        const std::string label =
            "whole " + std::string{direction(from)} + " " + std::to_string(scale) + " flags " + std::to_string(flags);
        subjects_.push_back({label, from, scale, flags, nullptr, root});
    }
    if (scale == kSectionScale) add_sections(from, root, scale);
}

void Subjects::add_sections(Layout from, json_t* root, unsigned scale) {
    const k_cnvrt_table_t table = from == Layout::kOld ? K_CNVRT_NEW_SECTIONS : K_CNVRT_OLD_SECTIONS;
    const char* name;
    for (size_t i = 0; (name = k_cnvrt_section_name(table, i)) != nullptr; ++i) {
        const std::string place = source_of(name, from);
        json_t* const source = place.empty() ? root : k_conf_find_branch(root, place.c_str(), 0);
        if (source == nullptr) continue;  // A section that one of the layouts has not.
        const std::string label = std::string{name} + " " + direction(from) + " " + std::to_string(scale);
        subjects_.push_back({label, from, scale, 0, name, source});
    }
}

size_t count_nodes(json_t* value) {
    size_t count = 1;
    for (const auto [name, member] : members(value)) count += count_nodes(member);
    for (const auto [number, element] : elements(value)) count += count_nodes(element);
    return count;
}

}  // namespace kcnvrt::bench
