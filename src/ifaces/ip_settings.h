// ip_settings.h: the fields that the IP services of wired interfaces and those of LTE modems share.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

// None of them reports. `dhcp` is the word for the two fields that say what DHCP gives.
template <class Word>
constexpr auto ip_settings(Word dhcp) {
    // clang-format off
    return fields(
        //      old               new
        carried("nat"),
        carried("rip"),
        carried("auto"),
        dhcp   ("dhcp"),
        carried("name"),
        carried("igmp"),
        carried("gwip"),
        carried("gwif"),
        carried("iface",          "phy_iface"),
        carried("is_wan"),
        carried("contag"),
        carried("enable"),
        carried("metric"),
        carried("dns_sec"),
        carried("contype"),
        carried("hostname"),
        carried("table_id"),
        carried("dns_prim"),
        carried("firewall"),
        carried("serverid"),
        carried("leasetime"),
        carried("table_alt"),
        carried("vendor_id"),
        carried("ping_respond"),
        dhcp   ("dns_from_dhcp"));
    // clang-format on
}

}  // namespace kcnvrt
