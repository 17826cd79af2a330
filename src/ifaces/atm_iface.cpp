// An ATM interface.
#include "ifaces/layer2.h"
#include "ifaces/port_list.h"
#include "ifaces/service_groups.h"
#include "ifaces/type_table.h"

namespace kcnvrt {

namespace {

// The port list stands before "mac" because that is the order of their messages towards the old layout.
// clang-format off
constexpr auto kAtm = fields(
    carried     ("enable"),
    carried     ("is_wan"),
    carried     ("link_type"),
    carried     ("max_count"),
    carried     ("connection_mode"),
    carried     ("pvc_settings"),
    port_list   ("port"),
    string_field("mac"));
// clang-format on

using enum ServiceType;
constexpr GroupOrder kGroupOrder = {kBridge, kPppv6, kPppdual, kIpv6, kIp, kPpp};
static_assert(takes_each_row_once(kGroupOrder));

// The groups that may give the interface its connection type, in order of preference.
constinit const Key kContypeGroups[] = {"ip", "ppp", "ipv6", "pppv6"};

// The connection type of the first service that has one; null when there is none.
json_t* contype_of(json_t* new_services) {
    for (const Key name : kContypeGroups) {
        json_t* const group = get(new_services, name);
        if (size_of(group) < 2) continue;  // Nothing beside "max_instance".
        for (const auto [number, entry] : members(group))
            if (json_t* const contype = get(entry, "contype")) return contype;
    }
    return nullptr;
}

}  // namespace

int atm_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const int failures = to_new(kAtm, old_iface, entry, Report{"parse_atm", err});
    return failures + services_to_new(old_iface, entry, kGroupOrder, err);
}

int atm_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    int failures = to_old(kAtm, entry, old_iface, Report{"parse_new_atm", err});
    carry(old_iface, "contype", contype_of(get(entry, "services")));
    if (has(entry, "services")) failures += services_to_old(entry, old_iface, err);
    return failures;
}

}  // namespace kcnvrt
