// The bridge of the LAN: its ports, and its services with their addresses and DHCP servers.
#include "frame/list.h"
#include "ifaces/bridge_split.h"
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/port_list.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kBridge = fields(
    carried       ("enable"),
    // Of the whole bridge in the new layout, of each service in the old one.
    carried_to_new("useipv6"),
    string_field  ("mac"),
    name_list     ("members"),
    port_list     ("port"));
// clang-format on

int services_to_new(json_t* old_iface, json_t* new_iface, const Report& report) {
    json_t* const old_services = get(old_iface, "services");
    if (old_services == nullptr) return 0;
    int failures = 0;
    ListBuilder ip_group;
    ListBuilder ipv6_group;
    for (const auto [name, old_service] : SortedMembers{old_services}) {
        if (!is_text(get(old_service, "type"), "ip")) continue;
        Json ip_entry = named_entry("ifname_l3", name);
        Json ipv6_entry = named_entry("ifname_l3", name);
        failures += split_service(old_service, ip_entry.get(), ipv6_entry.get(), report);
        ip_group.add(std::move(ip_entry));
        ipv6_group.add(std::move(ipv6_entry));
        carry(new_iface, "useipv6", get(old_service, "useipv6"));
    }
    Json new_services = object();
    set(new_services.get(), "ip", ip_group.finish());
    set(new_services.get(), "ipv6", ipv6_group.finish());
    set(new_iface, "services", std::move(new_services));
    return failures;
}

// Every entry of the group "ip", with the one of the same number in "ipv6" where there is one.
int services_to_old(json_t* new_iface, json_t* old_iface, const Report& report) {
    json_t* const new_services = get(new_iface, "services");
    if (new_services == nullptr) return 0;
    json_t* const ipv6_group = get(new_services, "ipv6");
    int failures = 0;
    Json old_services = object();
    for (const auto [number, ip_entry] : members(get(new_services, "ip"))) {
        if (!json_is_object(ip_entry)) continue;
        Json old_service = object();
        set(old_service.get(), "type", string("ip"));
        carry(old_service.get(), "useipv6", get(new_iface, "useipv6"));
        failures += rejoin_service(ip_entry, get(ipv6_group, number), old_service.get(), report);
        set_named(old_services.get(), get(ip_entry, "ifname_l3"), std::move(old_service));
    }
    set(old_iface, "services", std::move(old_services));
    return failures;
}

}  // namespace

int bridge_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const Report report{"parse_bridge", err};
    const int failures = to_new(kBridge, old_iface, entry, report);
    return failures + services_to_new(old_iface, entry, report.under("parse_ip_services_forBridge"));
}

int bridge_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const Report report{"parse_new_bridge", err};
    const int failures = to_old(kBridge, entry, old_iface, report);
    return failures + services_to_old(entry, old_iface, report);
}

}  // namespace kcnvrt
