// A whole configuration: a fixed list of steps in each direction, each a section through its handler.
#include "document/sections.h"
#include "frame/json.h"
#include "frame/report.h"
#include "k_cnvrt.h"
#include "k_conf.h"

using namespace kcnvrt;

namespace {

// Where a step finds its source: the root itself, or a member of the root, of "Device" or of its "Users".
enum class In : uint8_t { kRoot, kDevice, kUsers };

// A step runs with either setting of the DSL VLAN flag, or with one of them.
enum class When : uint8_t { kAlways, kVlan, kDslVlan };

using enum Container;
using enum When;

struct Step {
    In in;
    Name source;  // "" is the object itself
    Name result;  // in the destination; "-" merges into it
    k_cnvrt_handler_t handler;
    Container container = kObject;
    When when = kAlways;
};

bool runs(const Step& step, uint8_t flags) {
    if (step.when == kAlways) return true;
    return (step.when == kDslVlan) == ((flags & K_CNVRT_DSL_VLAN) != 0);
}

// The objects in which the steps of a conversion find their sources.
struct Source {
    json_t* root;
    json_t* device;
    json_t* users;

    json_t* object_of(const Step& step) const {
        return step.in == In::kRoot ? root : step.in == In::kDevice ? device : users;
    }
    json_t* operator[](const Step& step) const {
        json_t* const object = object_of(step);
        return step.source.is_empty() ? object : get(object, step.source);
    }
};

// clang-format off
constinit const Step kToOld[] = {
    // source                            in the old root   handler                              made in  when
    {In::kRoot,   "",                  "-",              k_cnvrt_get_ifaces_from_new},
    {In::kDevice, "Vlan",              "vlan",           k_cnvrt_get_vlan_from_new,           kObject, kVlan},
    {In::kDevice, "Vlan",              "-",              k_cnvrt_get_vlan_dsl_from_new,       kObject, kDslVlan},
    {In::kDevice, "WiFi",              "wifi",           k_cnvrt_get_wifi_from_new},
    {In::kDevice, "Roaming",           "roaming",        k_cnvrt_get_roaming_from_new},
    {In::kDevice, "Voip",              "voip",           k_cnvrt_get_voip_from_new},
    {In::kDevice, "Routing",           "-",              k_cnvrt_get_routing_from_new},
    {In::kDevice, "Services",          "-",              k_cnvrt_get_services_from_new},
    {In::kDevice, "wan_pvid",          "wan_pvid",       k_cnvrt_get_wan_pvid_from_new},
    {In::kUsers,  "sysusers",          "sysusers",       k_cnvrt_get_sysusers_from_new,       kArray},
    {In::kDevice, "RemoteAccess",      "httpaccess",     k_cnvrt_get_remote_from_new,         kArray},
    {In::kDevice, "NetFilter",         "netfilter",      json_section_copy},
    {In::kDevice, "Adsl",              "adsl",           json_section_copy},
    {In::kDevice, "Port_settings",     "ports_config",   k_cnvrt_get_port_settings_from_new},
    {In::kDevice, "Port_bandwidth",    "port_bandwidth", k_cnvrt_get_port_bandwidth_from_new},
    {In::kDevice, "DeviceInfo",        "-",              k_cnvrt_get_deviceinfo_from_new},
    {In::kDevice, "Customization",     "-",              k_cnvrt_get_customs_from_new},
    {In::kDevice, "Firewall",          "Firewall",       json_section_copy},
    {In::kDevice, "Firewall_v6",       "Firewall_v6",    json_section_copy},
    {In::kDevice, "Scheduler",         "Scheduler",      json_section_copy},
    {In::kDevice, "SysStatistics",     "SysStatistics",  json_section_copy},
    {In::kDevice, "PKI",               "PKI",            json_section_copy},
    {In::kDevice, "Port_segmentation", "Port_segmentation", json_section_copy},
    {In::kRoot,   "Links",             "Links",          json_section_copy},
    {In::kDevice, "Default_ssid",      "-",              k_cnvtr_get_default_ssid_from_new},
};

constinit const Step kToNew[] = {
    // source                          in "Device"       handler                              made in  when
    {In::kRoot, "",                  "-",              k_cnvrt_get_ifaces_from_old},
    {In::kRoot, "",                  "Services",       k_cnvrt_get_services_from_old},
    {In::kRoot, "",                  "Routing",        k_cnvrt_get_routing_from_old},
    {In::kRoot, "voip",              "Voip",           k_cnvrt_get_voip_from_old},
    {In::kRoot, "vlan",              "Vlan",           k_cnvrt_get_vlan_from_old,           kObject, kVlan},
    {In::kRoot, "",                  "Vlan",           k_cnvrt_get_vlan_dsl_from_old,       kObject, kDslVlan},
    {In::kRoot, "wifi",              "WiFi",           k_cnvrt_get_wifi_from_old},
    {In::kRoot, "roaming",           "Roaming",        k_cnvrt_get_roaming_from_old},
    {In::kRoot, "httpaccess",        "RemoteAccess",   k_cnvrt_get_remote_from_old},
    {In::kRoot, "wan_pvid",          "wan_pvid",       k_cnvrt_get_wan_pvid_from_old},
    {In::kRoot, "netfilter",         "NetFilter",      json_section_copy},
    {In::kRoot, "adsl",              "Adsl",           json_section_copy},
    // Both names make "QoS": where a configuration has both, the later one replaces the earlier.
    {In::kRoot, "queuemanagement",   "QoS",            k_cnvrt_get_qos_from_old},
    {In::kRoot, "qos",               "QoS",            k_cnvrt_get_qos_from_old},
    {In::kRoot, "ports_config",      "Port_settings",  k_cnvrt_get_port_settings_from_old},
    {In::kRoot, "port_bandwidth",    "Port_bandwidth", k_cnvrt_get_port_bandwidth_from_old},
    {In::kRoot, "",                  "-",              k_cnvrt_get_deviceinfo_from_old},
    {In::kRoot, "",                  "Customization",  k_cnvrt_get_customs_from_old},
    {In::kRoot, "Firewall",          "Firewall",       json_section_copy},
    {In::kRoot, "Firewall_v6",       "Firewall_v6",    json_section_copy},
    {In::kRoot, "Scheduler",         "Scheduler",      json_section_copy},
    {In::kRoot, "SysStatistics",     "SysStatistics",  json_section_copy},
    {In::kRoot, "PKI",               "PKI",            json_section_copy},
    {In::kRoot, "Port_segmentation", "Port_segmentation", json_section_copy},
};

// After the others: "Links" goes into the new root itself, and the default SSIDs come last.
constinit const Step kLinksToNew       = {In::kRoot, "Links",        "Links", json_section_copy};
constinit const Step kDefaultSsidToNew = {In::kRoot, "default_ssid", "-",     k_cnvtr_get_default_ssid_from_old};
// clang-format on

int run(const Step& step, const Source& source, json_t* destination, const Report& report) {
    const int failures = json_section_parser(source[step], step.result.text(), destination, report.err(),
                                             step.container == kArray, step.handler);
    return report.placed(failures, source.object_of(step), step.source);
}

template <size_t N>
int run_all(const Step (&steps)[N], const Source& source, json_t* destination, uint8_t flags, const Report& report) {
    int failures = 0;
    for (const Step& step : steps)
        if (runs(step, flags)) failures += run(step, source, destination, report);
    return failures;
}

// The old QoS section is named by what the conversion made of it. A failed conversion counts 1, whatever its own count.
int qos_to_old(json_t* device, json_t* old_root, const Report& report) {
    json_t* const qos = get(device, "QoS");
    if (qos == nullptr) return 0;
    Json section = object();
    if (report.placed(k_cnvrt_get_qos_from_new(qos, section.get(), report.err()), device, "QoS") != 0) return 1;
    const bool is_legacy = has(section.get(), "links") || has(section.get(), "filters");
    set(old_root, is_legacy ? Key{"qos"} : Key{"queuemanagement"}, std::move(section));
    return 0;
}

// The users handler writes an array for version 0 and an object for later ones, and refuses the other container.
int users_to_old(json_t* device, json_t* old_root, const Report& report) {
    Json section = array_or_object(k_cnvrt_get_users_from_new, get(device, "Users"), report.err());
    if (section == nullptr) return report.fail_at(device, "Users", "Users json is not object or array!");
    const Key name = json_is_array(section.get()) ? Key{"passwd"} : Key{"users"};
    set(old_root, name, std::move(section));
    return 0;
}

int users_to_new(json_t* old_root, json_t* device, const Report& report) {
    int failures = 0;
    Json users = object();
    if (json_t* const sysusers = get(old_root, "sysusers")) {
        Json section = object();
        failures += k_cnvrt_get_sysusers_from_old(sysusers, section.get(), report.err());
        set(users.get(), "sysusers", std::move(section));
    }
    const Key name = has(old_root, "passwd") ? Key{"passwd"} : Key{"users"};
    failures +=
        report.placed(k_cnvrt_get_users_from_old(get(old_root, name), users.get(), report.err()), old_root, name);
    carry(device, "Default_pass", get(old_root, "default_pass"));
    set(device, "Users", std::move(users));
    return failures;
}

}  // namespace

json_t* k_cnvrt_to_old(json_t* new_root, uint8_t flags, k_err_t* err) {
    json_t* const device = get(new_root, "Device");
    const Source source{new_root, device, get(device, "Users")};
    const Report report{__func__, err};
    const size_t first = k_err_count(err);
    Json old_root = object();
    int failures = run_all(kToOld, source, old_root.get(), flags, report);
    failures += qos_to_old(device, old_root.get(), report);
    failures += users_to_old(device, old_root.get(), report);
    carry(old_root.get(), "default_pass", get(device, "Default_pass"));
    k_err_locate(err, first, new_root);
    return failures == 0 ? old_root.release() : nullptr;
}

json_t* k_cnvrt_to_new(json_t* old_root, json_t* base, uint8_t flags, k_err_t* err) {
    const Source source{old_root, nullptr, nullptr};
    const Report report{__func__, err};
    const size_t first = k_err_count(err);
    Json new_root = object();
    Json device = object();
    int failures = run_all(kToNew, source, device.get(), flags, report);
    failures += run(kLinksToNew, source, new_root.get(), report);
    failures += run(kDefaultSsidToNew, source, device.get(), report);
    failures += users_to_new(old_root, device.get(), report);
    set(new_root.get(), "Device", std::move(device));
    k_err_locate(err, first, old_root);
    if (base != nullptr) return difference_to(base, new_root.get(), flags, err);
    return failures == 0 ? new_root.release() : nullptr;
}
