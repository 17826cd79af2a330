// The lists that grow, by their places in each layout.
#include "outer_lists.h"

namespace kcnvrt::bench {

namespace {

// Outer lists only: what lies inside an entry is copied with it, so that a document grows in proportion to its scale.

constexpr OuterList kOld[] = {
    {"ifaces"},
    {"ppp_inf"},
    {"lan"},
    {"phys_ifaces"},
    {"vlan/avail_ports"},
    {"vlan/vlans", "pos"},
    {"groups"},
    {"wifi/mbssid"},
    {"wifi/5G_mbssid"},
    {"voip/VoiceService/1/VoiceProfile/1/Line"},
    {"route"},
    {"rip"},
    {"passwd"},
    {"users/list"},
    {"sysusers"},
    {"httpaccess"},
    {"wan_pvid"},
    {"ports_config"},
    {"port_bandwidth"},
    {"queuemanagement/Queue"},
    {"queuemanagement/Policer"},
    {"queuemanagement/Classification"},
    {"qos/links"},
    {"qos/filters"},
    {"ipfilter"},
    {"macfilter", "id"},
    {"urlfilter/url_list"},
    {"dhcp_opt_rule"},
    {"vserver"},
    {"ddns"},
    {"ipsec/tunnels"},
    {"tr069/notify"},
    {"tr069/file_trans"},
    {"tr069/misc/arp"},
    {"tr069/misc/route_17_33"},
    {"dns/entries"},
};

constexpr OuterList kNew[] = {
    {"Device/Ifaces/bridge"},
    {"Device/Ifaces/ethernet"},
    {"Device/Ifaces/3g"},
    {"Device/Ifaces/lte"},
    {"Device/Ifaces/atm"},
    {"Device/Ifaces/auto"},
    {"Device/Ifaces/ppp_inf"},
    {"Device/Ifaces/lan"},
    {"Device/Ifaces/phys_ifaces", "name"},
    {"Device/Vlan/avail_ports"},
    {"Device/Vlan/vlans"},
    {"Device/WiFi/Radio/1/mbssid"},
    {"Device/WiFi/Radio/2/mbssid"},
    {"Device/Voip/VoiceService/1/VoiceProfile/1/Line"},
    {"Device/Routing/*/Routes"},  // both families under one numbering
    {"Device/Routing/RIP"},
    {"Device/Users/list", "login"},
    {"Device/Users/sysusers"},
    {"Device/RemoteAccess"},
    {"Device/wan_pvid", "ifname_l2"},
    {"Device/Port_settings", "name"},
    {"Device/Port_bandwidth", "name"},
    {"Device/QoS/Queue"},
    {"Device/QoS/Policer"},
    {"Device/QoS/Classification"},
    {"Device/Services/ipfilter"},
    {"Device/Services/macfilter"},
    {"Device/Services/urlfilter/url_list"},
    {"Device/Services/dhcp_opt_rule"},
    {"Device/Services/vserver"},
    {"Device/Services/ddns"},
    {"Device/Services/vpn/ipsec/tunnels"},
    {"Device/Services/tr069/notify"},
    {"Device/Services/tr069/file_trans"},
    {"Device/Services/tr069/misc/arp"},
    {"Device/Services/tr069/misc/route_17_33"},
};

}  // namespace

std::span<const OuterList> outer_lists(Layout layout) {
    return layout == Layout::kOld ? std::span<const OuterList>{kOld} : std::span<const OuterList>{kNew};
}

}  // namespace kcnvrt::bench
