// ppp_session.h: the fields of a PPP session, which the PPP services of wired interfaces, the dial-up services of 3G
// modems and the tunnels over services share. What one of them has alone stands in its own file.
#pragma once

#include "frame/field.h"
#include "frame/list.h"

namespace kcnvrt {

// clang-format off

// The fields that report in both directions. Dial-up services visit them after the session, the others before it.
inline constexpr auto kPppReporting = fields(
    integer_field("auth"),
    integer_field("encrypt"),
    password     ("password"));

// `type` is the name under which both layouts keep the type of the connection.
template <size_t N>
constexpr auto ppp_session(const char (&type)[N]) {
    return fields(
        //        old               new
        carried  ("auto"),
        carried  ("enable"),
        carried  ("noauth"),
        carried  ("igmp"),
        carried  ("nat"),
        carried  ("gwif"),
        carried  ("ping_respond"),
        carried  ("ppp_debug"),
        carried  ("ppp_ip_ext"),
        carried  ("firewall"),
        carried  ("rip"),
        carried  ("table_alt"),
        carried  ("mtu"),
        carried  ("unit"),
        carried  ("contag"),
        carried  ("metric"),
        carried  ("table_id"),
        carried  ("iface",          "phy_iface"),
        carried  ("static_ip"),
        carried  ("dns_prim"),
        carried  ("dns_sec"),
        carried  ("username"),
        carried  (type),
        carried  ("extra_options"),
        carried  ("servicename"),
        carried  ("name"),
        carried  ("gateway"),
        carried  ("ip"),
        carried  ("mask"),
        carried  ("keep_alive"),
        name_list("lock"),
        status   ("connection_status"));
}

// clang-format on

// The session of a PPP service or a dial-up service.
inline constexpr auto kPppSession = ppp_session("contype");

}  // namespace kcnvrt
