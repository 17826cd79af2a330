// An interface of the type "auto", whose services have no types of their own.
#include "frame/list.h"
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/tunnels.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kAuto = fields(
    // Not read from an old interface, whose services have their own.
    carried_to_old("dhcp"),
    carried       ("is_wan"),
    carried       ("max_count"));

constexpr auto kAutoService = fields(
    // Never read from an old service, whatever it says.
    name_list_to_old("lock"),
    carried         ("dhcp"),
    carried         ("table_id"),
    carried         ("contype"),
    tunnels_to_new  ("tunnels"));
// clang-format on

// Services of whatever type, in the order of the old object.
int services_to_new(json_t* old_iface, json_t* new_iface, const Report& report) {
    json_t* const old_services = get(old_iface, "services");
    if (old_services == nullptr) return 0;
    int failures = 0;
    ListBuilder services;
    for (const auto [name, old_service] : members(old_services)) {
        Json service = named_entry("ifname_l3", name);
        failures += to_new(kAutoService, old_service, service.get(), report);
        services.add(std::move(service));
    }
    set_only_group(new_iface, "auto", services.finish());
    return failures;
}

// The tunnels of these services name the layer-2 interface.
int services_to_old(json_t* new_iface, json_t* old_iface, const Report& report) {
    json_t* const l2_iface = get(new_iface, "ifname_l2");
    return only_group_to_old(new_iface, "auto", old_iface, [&](json_t* service, json_t* old_service) {
        const int failures = to_old(kAutoService, service, old_service, report);
        return failures + tunnels_to_old(service, old_service, l2_iface, report);
    });
}

}  // namespace

int auto_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const Report report{"parse_auto", err};
    const int failures = to_new(kAuto, old_iface, entry, report);
    return failures + services_to_new(old_iface, entry, report);
}

int auto_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const Report report{"parse_new_auto", err};
    const int failures = to_old(kAuto, entry, old_iface, report);
    return failures + services_to_old(entry, old_iface, report);
}

}  // namespace kcnvrt
