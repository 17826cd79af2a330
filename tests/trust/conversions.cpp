// The functions of the library with everything that they can be given: flags, bases, names of sections.
#include "conversions.h"

#include <algorithm>

#include "k_cnvrt.h"

namespace {

struct SectionSource {
    const char* name;
    const char* source;
};

// clang-format off
// Services that are not here have one name in both layouts.
constexpr SectionSource kOldSections[] = {
    // old section       from, in the new document
    {"ifaces",          "Device/Ifaces"},
    {"netfilter",       "Device/NetFilter"},
    {"phys_ifaces",     "Device/Ifaces/phys_ifaces"},
    {"vlan",            "Device/Vlan"},
    {"dsl_vlan",        "Device/Vlan"},
    {"wifi",            "Device/WiFi"},
    {"httpaccess",      "Device/RemoteAccess"},
    {"users",           "Device/Users"},
    {"sysusers",        "Device/Users/sysusers"},
    {"wan_pvid",        "Device/wan_pvid"},
    {"route",           "Device/Routing"},
    {"rip",             "Device/Routing/RIP"},
    {"queuemanagement", "Device/QoS"},
    {"voip",            "Device/Voip"},
    {"adsl",            "Device/Adsl"},
    {"ports_config",    "Device/Port_settings"},
    {"port_bandwidth",  "Device/Port_bandwidth"},
    {"Firewall",        "Device/Firewall"},
    {"Firewall_v6",     "Device/Firewall_v6"},
    {"default_ssid",    "Device/Default_ssid"},
    {"dns",             "Device/Services/dns"},
    {"igmp",            "Device/Services/igmpx"},
    {"ipsec",           "Device/Services/vpn/ipsec"},
};

// Sections that are not here have one name in both layouts; some have one of two names.
constexpr SectionSource kNewSections[] = {
    // new section       from, in the old document
    {"Ifaces",          "ifaces"},
    {"NetFilter",       "netfilter"},
    {"Vlan",            "vlan"},
    {"DSL_Vlan",        ""},
    {"WiFi",            "wifi"},
    {"RemoteAccess",    "httpaccess"},
    {"Users",           "passwd"},
    {"Users",           "users"},
    {"Static",          "route"},
    {"QoS",             "queuemanagement"},
    {"QoS",             "qos"},
    {"Voip",            "voip"},
    {"Adsl",            "adsl"},
    {"Port_settings",   "ports_config"},
    {"Port_bandwidth",  "port_bandwidth"},
    {"Default_ssid",    "default_ssid"},
};
// clang-format on

// By the first row of that name whose source is there.
template <size_t Rows>
json_t* source_in(const SectionSource (&rows)[Rows], const std::string& name, const std::string& path_of_others,
                  const json_t* document) {
    bool has_row = false;
    for (const SectionSource& row : rows) {
        if (name != row.name) continue;
        has_row = true;
        if (json_t* source = member_at(document, row.source)) return source;
    }
    return has_row ? nullptr : member_at(document, path_of_others);
}

Conversion to_old(const char* name, const json_t* document, uint8_t flags) {
    return {name, Tree{json_deep_copy(document)},
            [flags](json_t* source, k_err_t* err) { return k_cnvrt_to_old(source, flags, err); }};
}

// The base, where there is one, is the other document: much is different and something is the same.
Conversion to_new(const char* name, const json_t* document, const json_t* base, uint8_t flags) {
    json_t* pair = json_object();
    json_object_set_new(pair, "source", json_deep_copy(document));
    if (base != nullptr) json_object_set_new(pair, "base", json_deep_copy(base));
    const auto run = [flags](json_t* source, k_err_t* err) {
        return k_cnvrt_to_new(json_object_get(source, "source"), json_object_get(source, "base"), flags, err);
    };
    return {name, Tree{pair}, run, json_object_get(pair, "source"), base != nullptr};
}

void add_old_sections(std::vector<Conversion>& conversions, const json_t* new_document) {
    for (size_t i = 0; const char* name = k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, i); ++i) {
        json_t* source = source_of_old_section(name, new_document);
        conversions.push_back(
            {std::string{"old section "} + name, Tree{json_deep_copy(source)},
             [name](json_t* section, k_err_t* err) { return k_cnvrt_get_section_to_old(name, section, err); }});
    }
}

void add_new_sections(std::vector<Conversion>& conversions, const json_t* old_document) {
    for (size_t i = 0; const char* name = k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, i); ++i) {
        json_t* source = source_of_new_section(name, old_document);
        conversions.push_back(
            {std::string{"new section "} + name, Tree{json_deep_copy(source)}, [name](json_t* section, k_err_t* err) {
                 return k_cnvrt_get_section_to_new(name, section, nullptr, 0, err);
             }});
    }
}

}  // namespace

json_t* source_of_old_section(const std::string& name, const json_t* new_document) {
    return source_in(kOldSections, name, "Device/Services/" + name, new_document);
}

json_t* source_of_new_section(const std::string& name, const json_t* old_document) {
    return source_in(kNewSections, name, name, old_document);
}

json_t* member_at(const json_t* document, const std::string& path) {
    json_t* value = const_cast<json_t*>(document);
    for (size_t at = 0; at < path.size();) {
        const size_t end = std::min(path.find('/', at), path.size());
        value = json_object_getn(value, path.data() + at, end - at);
        at = end + 1;
    }
    return value;
}

std::vector<Conversion> conversions_of(const json_t* old_document, const json_t* new_document) {
    std::vector<Conversion> conversions;
    conversions.push_back(to_old("to old", new_document, 0));
    conversions.push_back(to_old("to old, DSL VLANs", new_document, K_CNVRT_DSL_VLAN));
    conversions.push_back(to_new("to new", old_document, nullptr, 0));
    conversions.push_back(to_new("to new, DSL VLANs", old_document, nullptr, K_CNVRT_DSL_VLAN));
    conversions.push_back(to_new("to new, as a patch", old_document, new_document, 0));
    conversions.push_back(to_new("to new, as a merge patch", old_document, new_document, K_CNVRT_MERGE_PATCH));
    add_old_sections(conversions, new_document);
    add_new_sections(conversions, old_document);
    return conversions;
}
