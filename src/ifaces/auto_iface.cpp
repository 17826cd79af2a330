// The automatic interface, whose connection type is found out by trying.
#include "ifaces/blocks.h"
#include "ifaces/entries.h"
#include "ifaces/layer2.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kAuto = fields(
    // Not read from an old interface, whose services have their own.
    field<nullptr, ways::carry>("dhcp"),
    carried("is_wan"),
    carried("max_count"));

constexpr auto kAutoService = fields(
    field<nullptr, ways::names_to_old>("lock"),
    carried("dhcp"),
    carried("table_id"),
    carried("contype"),
    field<ways::tunnels_to_new, nullptr>("tunnels"));
// clang-format on

// Services of whatever type, in the order of the old object.
int services_to_new(json_t* old_services, json_t* new_iface, const Report& report) {
    int failures = 0;
    ListBuilder services;
    for (const auto [name, old_service] : members(old_services)) {
        Json service = named_entry("ifname_l3", name);
        failures += to_new(kAutoService, old_service, service.get(), report);
        services.add(std::move(service));
    }
    Json new_services = object();
    set(new_services.get(), "auto", services.finish());
    set(new_iface, "services", std::move(new_services));
    return failures;
}

// The tunnels of these services name the layer-2 interface.
int services_to_old(json_t* new_iface, json_t* old_iface, const Report& report) {
    json_t* const services = get(new_iface, "services");
    if (services == nullptr) return 0;
    Json old_services = object();
    json_t* const l2_iface = get(new_iface, "ifname_l2");
    const auto service_to_old = [&report, l2_iface](json_t* service, json_t* old_service) {
        int failures = to_old(kAutoService, service, old_service, report);
        failures += tunnels_to_old(service, old_service, l2_iface, report);
        return failures;
    };
    const int failures = entries_to_old(get(services, "auto"), "ifname_l3", "auto", old_services.get(), service_to_old);
    set(old_iface, "services", std::move(old_services));
    return failures;
}

}  // namespace

int auto_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err) {
    const Report report{"parse_auto", err};
    Json entry = named_entry("ifname_l2", name);
    int failures = to_new(kAuto, old_iface, entry.get(), report);
    if (json_t* const services = get(old_iface, "services")) failures += services_to_new(services, entry.get(), report);
    set(group, Decimal{number}, std::move(entry));
    return failures;
}

int auto_to_old(json_t* group, json_t* old_ifaces, k_err_t* err) {
    if (!has_instances(group)) return 0;
    const Report report{"parse_new_auto", err};
    return entries_to_old(group, "ifname_l2", "auto", old_ifaces, [&report](json_t* entry, json_t* old_iface) {
        int failures = to_old(kAuto, entry, old_iface, report);
        failures += services_to_old(entry, old_iface, report);
        return failures;
    });
}

}  // namespace kcnvrt
