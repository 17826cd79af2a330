// A service of the type "ip" of an Ethernet or ATM interface.
#include "frame/list.h"
#include "ifaces/addresses.h"
#include "ifaces/dot1x.h"
#include "ifaces/ip_settings.h"
#include "ifaces/services.h"
#include "ifaces/tunnels.h"

namespace kcnvrt {

namespace {

constexpr char kAuthor[] = "parse_service_ip";

constexpr auto kSettings = ip_settings(carried_or_false);

// The lock list stands after the 802.1X block because that is the order of their messages towards the old layout.
// clang-format off
constexpr auto kIpService = fields(
    //                  old           new
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
    const Report report{kAuthor, err};
    const int failures = to_new(kSettings, old_service, entry, report);
    return failures + to_new(kIpService, old_service, entry, report);
}

int ip_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    const Report report{kAuthor, err};
    carry(old_service, "l2_iface", l2_iface);
    int failures = to_old(kSettings, entry, old_service, report);
    failures += to_old(kIpService, entry, old_service, report);
    failures += tunnels_to_old(entry, old_service, get(entry, "ifname_l3"), report);
    return failures;
}

}  // namespace kcnvrt
