// The tunnels over a service: objects keyed by the name of a tunnel against a numbered list.
#include "ifaces/tunnels.h"

#include "frame/list.h"
#include "ifaces/named_entries.h"
#include "ifaces/ppp_session.h"

namespace kcnvrt {

namespace {

constexpr auto kTunnel = ppp_session("type");

constexpr const char* kAuthor = "parse_tunnels";

int tunnel_to_new(json_t* old_tunnel, json_t* tunnel, const Report& report) {
    const int failures = to_new(kPppReporting, old_tunnel, tunnel, report);
    return failures + to_new(kTunnel, old_tunnel, tunnel, report);
}

int tunnel_to_old(json_t* tunnel, json_t* old_tunnel, const Report& report) {
    const int failures = to_old(kPppReporting, tunnel, old_tunnel, report);
    return failures + to_old(kTunnel, tunnel, old_tunnel, report);
}

}  // namespace

int ways::tunnels_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    const Report tunnels_report = report.under(kAuthor);
    int failures = 0;
    ListBuilder tunnels;
    for (const auto [name, old_tunnel] : SortedMembers{value}) {
        Json tunnel = named_entry("ifname_tun", name);
        failures += tunnel_to_new(old_tunnel, tunnel.get(), tunnels_report);
        tunnels.add(std::move(tunnel));
    }
    set(destination, key, tunnels.finish());
    return failures;
}

int tunnels_to_old(json_t* new_service, json_t* old_service, json_t* l3_iface, const Report& report) {
    json_t* const tunnels = get(new_service, "tunnels");
    if (tunnels == nullptr) return 0;
    Json old_tunnels = object();
    const auto convert = [l3_iface, report = report.under(kAuthor)](json_t* tunnel, json_t* old_tunnel) {
        carry(old_tunnel, "l3_iface", l3_iface);
        return tunnel_to_old(tunnel, old_tunnel, report);
    };
    const int failures = entries_to_old(tunnels, "ifname_tun", old_tunnels.get(), convert);
    set(old_service, "tunnels", std::move(old_tunnels));
    return failures;
}

}  // namespace kcnvrt
