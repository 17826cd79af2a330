// ppp_session.h: the fields of a PPP session, which the PPP services of wired interfaces and the dial-up services of 3G
// modems share. They are two tables because the two kinds of service report on them in different orders.
#pragma once

#include "frame/field.h"
#include "frame/list.h"

namespace kcnvrt {

// clang-format off
inline constexpr auto kPppCredentials = fields(
    integer_field("auth"),
    integer_field("encrypt"),
    password     ("password"));

inline constexpr auto kPppSession = fields(
    //        old      new
    carried  ("mtu"),
    carried  ("unit"),
    carried  ("contag"),
    carried  ("table_id"),
    carried  ("metric"),
    carried  ("ppp_state"),
    carried  ("ondemand"),
    carried  ("auto"),
    carried  ("enable"),
    carried  ("noauth"),
    carried  ("ppp_ip_ext"),
    carried  ("igmp"),
    carried  ("nat"),
    carried  ("gwif"),
    carried  ("ping_respond"),
    carried  ("ppp_debug"),
    carried  ("pppoe_pass_through"),
    carried  ("firewall"),
    carried  ("rip"),
    carried  ("is_wan"),
    carried  ("table_alt"),
    carried  ("iface", "phy_iface"),
    carried  ("static_ip"),
    carried  ("dns_prim"),
    carried  ("dns_sec"),
    carried  ("username"),
    carried  ("contype"),
    carried  ("extra_options"),
    carried  ("servicename"),
    carried  ("name"),
    carried  ("gateway"),
    carried  ("ip"),
    carried  ("mask"),
    carried  ("keep_alive"),
    name_list("lock"),
    status   ("connection_status"));
// clang-format on

}  // namespace kcnvrt
