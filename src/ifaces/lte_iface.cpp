#include "ifaces/addresses.h"
#include "ifaces/blocks.h"
#include "ifaces/entries.h"
#include "ifaces/layer2.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kLte = fields(
    carried("enable"),
    carried("is_wan"),
    carried("max_count"),
    port_list("port"),
    // A text or a number in the old layout, which gets it back as it stands.
    field<ways::integer_to_new, ways::carry>("mode"),
    string_field("mac"));

constexpr auto kIpService = fields(
    //          old                  new
    listed_ip  ("ip"),
    listed_mask("mask",              "ip"),
    carried    ("apn"),
    carried    ("nat"),
    carried    ("rip"),
    carried    ("auto"),
    carried    ("dhcp"),
    carried    ("name"),
    carried    ("igmp"),
    carried    ("gwip"),
    carried    ("gwif"),
    carried    ("iface",             "phy_iface"),
    carried    ("is_wan"),
    carried    ("contag"),
    carried    ("enable"),
    carried    ("metric"),
    carried    ("dns_sec"),
    carried    ("contype"),
    carried    ("hostname"),
    carried    ("table_id"),
    carried    ("dns_prim"),
    carried    ("firewall"),
    carried    ("serverid"),
    carried    ("leasetime"),
    carried    ("table_alt"),
    carried    ("vendor_id"),
    carried    ("ping_respond"),
    carried    ("dns_from_dhcp"),
    name_list  ("lock"),
    status     ("connection_status"),
    dot1x      ("8021x"));
// clang-format on

// Only IP services: others are dropped.
int services_to_new(json_t* old_services, json_t* new_iface, const Report& report) {
    int failures = 0;
    Json new_services = object();
    set(new_services.get(), "ip",
        services_of_type(old_services, "ip", failures, [&report](json_t* old_service, json_t* service) {
            return to_new(kIpService, old_service, service, report);
        }));
    set(new_iface, "services", std::move(new_services));
    return failures;
}

int services_to_old(json_t* new_services, json_t* old_iface, const Report& report) {
    Json old_services = object();
    const int failures = entries_to_old(
        get(new_services, "ip"), "ifname_l3", "ip", old_services.get(),
        [&report](json_t* service, json_t* old_service) { return to_old(kIpService, service, old_service, report); });
    set(old_iface, "services", std::move(old_services));
    return failures;
}

}  // namespace

int lte_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err) {
    const Report report{"parse_lte", err};
    Json entry = named_entry("ifname_l2", name);
    int failures = to_new(kLte, old_iface, entry.get(), report);
    if (json_t* const services = get(old_iface, "services"))
        failures += services_to_new(services, entry.get(), report.under("parse_ip_services_forLte"));
    set(group, Decimal{number}, std::move(entry));
    return failures;
}

int lte_to_old(json_t* group, json_t* old_ifaces, k_err_t* err) {
    if (!has_instances(group)) return 0;
    const Report report{"parse_new_lte", err};
    return entries_to_old(group, "ifname_l2", "lte", old_ifaces, [&report](json_t* entry, json_t* old_iface) {
        int failures = to_old(kLte, entry, old_iface, report);
        if (json_t* const services = get(entry, "services")) failures += services_to_old(services, old_iface, report);
        return failures;
    });
}

}  // namespace kcnvrt
