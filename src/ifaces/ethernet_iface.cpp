#include "ifaces/blocks.h"
#include "ifaces/entries.h"
#include "ifaces/layer2.h"
#include "ifaces/service_groups.h"

namespace kcnvrt {

namespace {

// Of this interface type alone the old layout keeps switches and numbers typed, and texts of them become so on the way.
KCNVRT_FIELD_WORD(kept_boolean, ways::carry, ways::boolean_to_new)
KCNVRT_FIELD_WORD(kept_integer, ways::carry, ways::integer_to_new)

// clang-format off
constexpr auto kEthernet = fields(
    kept_boolean("enable"),
    kept_boolean("is_wan"),
    kept_integer("mtu"),
    kept_integer("max_count"),
    carried     ("connection_mode"),
    string_field("mac"),
    port_list   ("port"));
// clang-format on

using enum ServiceType;
constexpr GroupOrder kGroupOrder = {kBridge, kIp, kIpv6, kPpp, kPppv6, kPppdual};

}  // namespace

int ethernet_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err) {
    Json entry = named_entry("ifname_l2", name);
    int failures = to_new(kEthernet, old_iface, entry.get(), Report{"parse_ethernet", err});
    failures += services_to_new(old_iface, entry.get(), kGroupOrder, err);
    set(group, Decimal{number}, std::move(entry));
    return failures;
}

int ethernet_to_old(json_t* group, json_t* old_ifaces, k_err_t* err) {
    if (!has_instances(group)) return 0;
    const Report report{"parse_new_ethernet", err};
    return entries_to_old(group, "ifname_l2", "ethernet", old_ifaces, [&](json_t* entry, json_t* old_iface) {
        int failures = to_old(kEthernet, entry, old_iface, report);
        failures += services_to_old(entry, old_iface, err);
        return failures;
    });
}

}  // namespace kcnvrt
