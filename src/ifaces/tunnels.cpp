#include "ifaces/tunnels.h"
#include "frame/list.h"
#include "ifaces/named_entries.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kTunnel = fields(
    //             old                  new
    integer_field("auth"),
    integer_field("encrypt"),
    password     ("password"),
    carried      ("auto"),
    carried      ("enable"),
    carried      ("noauth"),
    carried      ("igmp"),
    carried      ("nat"),
    carried      ("gwif"),
    carried      ("ping_respond"),
    carried      ("ppp_debug"),
    carried      ("ppp_ip_ext"),
    carried      ("firewall"),
    carried      ("rip"),
    carried      ("table_alt"),
    carried      ("mtu"),
    carried      ("unit"),
    carried      ("contag"),
    carried      ("metric"),
    carried      ("table_id"),
    carried      ("iface",              "phy_iface"),
    carried      ("static_ip"),
    carried      ("dns_prim"),
    carried      ("dns_sec"),
    carried      ("username"),
    carried      ("type"),
    carried      ("extra_options"),
    carried      ("servicename"),
    carried      ("name"),
    carried      ("gateway"),
    carried      ("ip"),
    carried      ("mask"),
    carried      ("keep_alive"),
    name_list    ("lock"),
    status       ("connection_status"));
// clang-format on

constexpr const char* kAuthor = "parse_tunnels";

}  // namespace

int ways::tunnels_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    const Report tunnels_report = report.under(kAuthor);
    int failures = 0;
    ListBuilder tunnels;
    for (const auto [name, old_tunnel] : SortedMembers{value}) {
        Json tunnel = named_entry("ifname_tun", name);
        failures += to_new(kTunnel, old_tunnel, tunnel.get(), tunnels_report);
        tunnels.add(std::move(tunnel));
    }
    set(destination, key, tunnels.finish());
    return failures;
}

int tunnels_to_old(json_t* new_service, json_t* old_service, json_t* l3_iface, const Report& report) {
    json_t* const tunnels = get(new_service, "tunnels");
    if (tunnels == nullptr) return 0;
    Json old_tunnels = object();
    const auto tunnel_to_old = [l3_iface, report = report.under(kAuthor)](json_t* tunnel, json_t* old_tunnel) {
        carry(old_tunnel, "l3_iface", l3_iface);
        return to_old(kTunnel, tunnel, old_tunnel, report);
    };
    const int failures = entries_to_old(tunnels, "ifname_tun", old_tunnels.get(), tunnel_to_old);
    set(old_service, "tunnels", std::move(old_tunnels));
    return failures;
}

}  // namespace kcnvrt
