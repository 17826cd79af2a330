#include "frame/list.h"
#include "ifaces/addresses.h"
#include "ifaces/dot1x.h"
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/port_list.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kLte = fields(
    carried       ("enable"),
    carried       ("is_wan"),
    carried       ("max_count"),
    port_list     ("port"),
    integer_in_new("mode"),
    string_field  ("mac"));

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

}  // namespace

int lte_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const Report report{"parse_lte", err};
    const Report of_service = report.under("parse_ip_services_forLte");
    const auto convert = [&](json_t* old_service, json_t* service) {
        return to_new(kIpService, old_service, service, of_service);
    };
    const int failures = to_new(kLte, old_iface, entry, report);
    return failures + only_group_to_new(old_iface, "ip", entry, convert);
}

int lte_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const Report report{"parse_new_lte", err};
    const auto convert = [&](json_t* service, json_t* old_service) {
        return to_old(kIpService, service, old_service, report);
    };
    const int failures = to_old(kLte, entry, old_iface, report);
    return failures + only_group_to_old(entry, "ip", old_iface, convert);
}

}  // namespace kcnvrt
