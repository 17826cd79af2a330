// A service of the type "ipv6" of an Ethernet or ATM interface.
#include "frame/list.h"
#include "ifaces/addresses.h"
#include "ifaces/services.h"

namespace kcnvrt {

namespace {

constexpr char kAuthor[] = "parse_service_ipv6";

// clang-format off
constexpr auto kIpv6Service = fields(
    //                  old           new
    carried_or_false   ("dhcp"),
    carried_or_false   ("dns_from_dhcp"),
    carried_or_false   ("dns_from_dhcpv6"),
    carried            ("ipv6_auto"),
    carried            ("slaac"),
    carried            ("ipv6_by_slaac"),
    carried            ("ipv6_by_dhcpv6"),
    carried            ("ipv6_by_dhcpv6_pd"),
    carried            ("nat"),
    carried            ("firewall"),
    carried            ("igmp"),
    carried            ("is_wan"),
    carried            ("rip"),
    carried            ("table_alt"),
    carried            ("gwifv6"),
    carried            ("contag"),
    carried            ("table_id"),
    carried            ("metric"),
    carried            ("enable"),
    carried            ("ping_respond"),
    carried            ("iface",      "phy_iface"),
    carried            ("name"),
    carried            ("dns_primv6"),
    carried            ("dns_secv6"),
    carried            ("ipv6lla"),
    carried            ("gwipv6"),
    carried            ("contype"),
    name_list          ("lock"),
    status             ("connection_status"),
    listed_ipv6        ("ipv6"),
    // The second address goes back to the old layout and never comes from it.
    listed_alias_to_old("alias_ipv6", "ipv6"));
// clang-format on

}  // namespace

int ipv6_service_to_new(json_t* old_service, json_t* entry, k_err_t* err) {
    return to_new(kIpv6Service, old_service, entry, Report{kAuthor, err});
}

int ipv6_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    carry(old_service, "l2_iface", l2_iface);
    // No failure of an IPv6 service counts in this direction.
    uncounted(err, [&] { to_old(kIpv6Service, entry, old_service, Report{kAuthor, err}); });
    return 0;
}

}  // namespace kcnvrt
