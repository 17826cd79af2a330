// service_list.h: the network services: where each stands in both layouts, and how it crosses.
#pragma once

#include "frame/container.h"
#include "frame/json.h"
#include "k_cnvrt.h"

namespace kcnvrt::service_list {

// In which of the two section tables the service is, under its old name.
enum class ByName : uint8_t { kBoth, kNew, kNone };

// Which directions have a converter. In the others the section is carried as it stands.
enum class Conversion : uint8_t { kBothWays, kToNew, kNone };

using enum Container;
using enum ByName;

struct Service {
    Name old_name;            // in the old root
    Name group;               // the object inside "Services" that keeps it, "" for none
    Name new_name;            // there
    bool converts_group;      // its converters are given the group, and find or make what is theirs in it
    Container old_container;  // of a converted one
    ByName by_name;
    Conversion conversion;
    k_cnvrt_handler_t to_new;  // null where there is none
    k_cnvrt_handler_t to_old;
};

inline constexpr Name kAlone = "";
inline constexpr Name kDns = "dns";
inline constexpr Name kVpn = "vpn";

constexpr Service copied(Name old_name, Name new_name, ByName by_name = kBoth) {
    return {old_name, kAlone, new_name, false, kObject, by_name, Conversion::kNone, nullptr, nullptr};
}
constexpr Service copied(Name name, ByName by_name = kBoth) {
    return copied(name, name, by_name);
}

constexpr Service converted(Name name, k_cnvrt_handler_t to_new, k_cnvrt_handler_t to_old, Container old_container,
                            ByName by_name = kBoth) {
    return {name, kAlone, name, false, old_container, by_name, Conversion::kBothWays, to_new, to_old};
}

constexpr Service converted_to_new(Name name, k_cnvrt_handler_t to_new) {
    return {name, kAlone, name, false, kObject, kBoth, Conversion::kToNew, to_new, nullptr};
}

constexpr Service grouped(Name group, Name name, k_cnvrt_handler_t to_new, k_cnvrt_handler_t to_old) {
    return {name, group, name, false, kObject, kBoth, Conversion::kBothWays, to_new, to_old};
}

constexpr Service part_of(Name group, Name old_name, Name new_name, k_cnvrt_handler_t to_new, k_cnvrt_handler_t to_old,
                          ByName by_name = kBoth) {
    return {old_name, group, new_name, true, kObject, by_name, Conversion::kBothWays, to_new, to_old};
}

// Both directions take the converted services in this order, except that towards the new layout groups come first.
// clang-format off
inline constexpr Service kServices[] = {
    //        old               new
    copied   ("autoupdate"),
    copied   ("dmz"),
    copied   ("dru_filtering"),
    copied   ("ftpd"),
    copied   ("igmp",           "igmpx"),
    copied   ("printserver"),
    copied   ("redirect"),
    copied   ("rlx_iptv_qos",   kNone),
    copied   ("samba"),
    copied   ("ssh"),
    copied   ("syslog"),
    copied   ("telnet"),
    copied   ("upnp"),
    copied   ("wan_failover"),
    copied   ("DCMS",           kNone),
    copied   ("hot_wifi",       kNone),
    copied   ("sla_agent",      kNone),
    //        group  old              new     to new                   to old                   old      by name
    part_of  (kDns,  "dns",           "ipv4", parse_old_dns,           parse_new_dns),
    part_of  (kDns,  "dns6",          "ipv6", parse_old_dns6,          parse_new_dns6,          kNew),
    converted(       "ddns",                  parse_old_ddns,          parse_new_ddns,          kArray),
    converted(       "dhcp_opt_rule",         parse_old_dhcp_opt_rule, parse_new_dhcp_opt_rule, kArray),
    converted(       "dlna",                  parse_old_dlna,          parse_new_dlna,          kObject),
    converted(       "gpon_settings",         parse_old_gpon_settings, parse_new_gpon_settings, kObject),
    converted(       "httpd",                 parse_old_httpd,         parse_new_httpd,         kObject),
    converted(       "ipfilter",              parse_old_ipfilter,      parse_new_ipfilter,      kArray),
    grouped  (kVpn,  "ipsec",                 parse_old_ipsec,         parse_new_ipsec),
    converted(       "macfilter",             parse_old_macfilter,     parse_new_macfilter,     kArray),
    converted(       "ntpclient",             parse_old_ntpclient,     parse_new_ntpclient,     kObject),
    converted(       "tr069",                 parse_old_tr069,         parse_new_tr069,         kObject),
    converted(       "transmission",          parse_old_transmission,  parse_new_transmission,  kObject),
    converted(       "urlfilter",             parse_old_urlfilter,     parse_new_urlfilter,     kObject),
    converted(       "vserver",               parse_old_vserver,       parse_new_vserver,       kArray),
    converted(       "watchdog",              parse_old_watchdog,      parse_new_watchdog,      kObject),
    // Towards new it gets a default; towards old it is carried.
    converted_to_new("yandex",                parse_old_yandex),
    converted(       "udpxy",                 parse_old_udpxy,         parse_new_udpxy,         kObject,  kNone),
};
// clang-format on

}  // namespace kcnvrt::service_list
