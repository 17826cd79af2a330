#include "frame/list.h"
#include "ifaces/addresses.h"
#include "ifaces/dot1x.h"
#include "ifaces/services.h"
#include "ifaces/tunnels.h"

namespace kcnvrt {

namespace {

constexpr char kAuthor[] = "parse_service_ip";

// The lock list stands after the 802.1X block because that is the order of their messages towards the old layout.
// clang-format off
constexpr auto kIpService = fields(
    //                  old           new
    carried_or_false   ("dhcp"),
    carried_or_false   ("dns_from_dhcp"),
    carried            ("auto"),
    carried            ("enable"),
    carried            ("ping_respond"),
    carried            ("nat"),
    carried            ("firewall"),
    carried            ("igmp"),
    carried            ("gwif"),
    carried            ("is_wan"),
    carried            ("rip"),
    carried            ("table_alt"),
    carried            ("leasetime"),
    carried            ("contag"),
    carried            ("table_id"),
    carried            ("metric"),
    carried            ("iface",      "phy_iface"),
    carried            ("name"),
    carried            ("dns_prim"),
    carried            ("dns_sec"),
    carried            ("serverid"),
    carried            ("gwip"),
    carried            ("vendor_id"),
    carried            ("hostname"),
    carried            ("contype"),
    status             ("connection_status"),
    dot1x              ("8021x"),
    name_list          ("lock"),
    listed_ip          ("ip"),
    listed_mask        ("mask",       "ip"),
    listed_ipv6_to_old ("ipv6"),
    listed_alias_to_old("alias_ipv6", "ipv6"),
    tunnels_to_new     ("tunnels"));
// clang-format on

}  // namespace

int ip_service_to_new(json_t* old_service, json_t* entry, k_err_t* err) {
    return to_new(kIpService, old_service, entry, Report{kAuthor, err});
}

int ip_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    const Report report{kAuthor, err};
    carry(old_service, "l2_iface", l2_iface);
    int failures = to_old(kIpService, entry, old_service, report);
    failures += tunnels_to_old(entry, old_service, get(entry, "ifname_l3"), report);
    return failures;
}

}  // namespace kcnvrt
