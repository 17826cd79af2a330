// An Ethernet interface.
#include "ifaces/layer2.h"
#include "ifaces/port_list.h"
#include "ifaces/service_groups.h"
#include "ifaces/type_table.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kEthernet = fields(
    boolean_in_old("enable"),
    boolean_in_old("is_wan"),
    integer_in_old("mtu"),
    integer_in_old("max_count"),
    carried       ("connection_mode"),
    string_field  ("mac"),
    port_list     ("port"));
// clang-format on

using enum ServiceType;
constexpr GroupOrder kGroupOrder = {kBridge, kIp, kIpv6, kPpp, kPppv6, kPppdual};
static_assert(takes_each_row_once(kGroupOrder));

}  // namespace

int ethernet_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const int failures = to_new(kEthernet, old_iface, entry, Report{"parse_ethernet", err});
    return failures + services_to_new(old_iface, entry, kGroupOrder, err);
}

int ethernet_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const int failures = to_old(kEthernet, entry, old_iface, Report{"parse_new_ethernet", err});
    return failures + services_to_old(entry, old_iface, err);
}

}  // namespace kcnvrt
