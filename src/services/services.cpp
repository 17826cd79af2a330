// "Services": one object of all network services in the new layout, a section of its own for each in the old one.
#include "k_cnvrt/services.h"

#include "frame/json.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// What an old section is, as json_services_parser is told.
enum Container { kObject = 0, kArray = 1 };

struct Service {
    Name old_name;  // in the old root
    Name group;     // the object inside "Services" that keeps it, "" for none
    Name new_name;  // there
    // Null: the section is attached as it stands. The converters of a group's services read from the group and write
    // into it themselves.
    k_cnvrt_handler_t to_new;
    k_cnvrt_handler_t to_old;
    Container old_container;
};

constexpr Name kAlone = "";
constexpr Name kDns = "dns";
constexpr Name kVpn = "vpn";

constexpr Service copied(Name old_name, Name new_name) {
    return {old_name, kAlone, new_name, nullptr, nullptr, kObject};
}
constexpr Service copied(Name name) {
    return copied(name, name);
}

constexpr Service converted(Name name, k_cnvrt_handler_t to_new, k_cnvrt_handler_t to_old, Container old_container) {
    return {name, kAlone, name, to_new, to_old, old_container};
}

constexpr Service regrouped(Name old_name, Name group, Name new_name, k_cnvrt_handler_t to_new,
                            k_cnvrt_handler_t to_old) {
    return {old_name, group, new_name, to_new, to_old, kObject};
}

int ipsec_to_vpn(json_t* ipsec, json_t* vpn, k_err_t* err) {
    return json_services_parser(ipsec, "ipsec", vpn, parse_old_ipsec, kObject, err);
}

int vpn_to_ipsec(json_t* vpn, json_t* ipsec, k_err_t* err) {
    return parse_new_ipsec(get(vpn, "ipsec"), ipsec, err);
}

// In the order in which both directions take the converted services, less that towards new the groups come first.
// clang-format off
constinit const Service kServices[] = {
    // old                      new
    copied   ("autoupdate"),
    copied   ("dmz"),
    copied   ("dru_filtering"),
    copied   ("ftpd"),
    copied   ("igmp",          "igmpx"),
    copied   ("printserver"),
    copied   ("redirect"),
    copied   ("rlx_iptv_qos"),
    copied   ("samba"),
    copied   ("ssh"),
    copied   ("syslog"),
    copied   ("telnet"),
    copied   ("upnp"),
    copied   ("wan_failover"),
    copied   ("DCMS"),
    copied   ("hot_wifi"),
    copied   ("sla_agent"),
    //                          group  new       to new                   to old                   old container
    regrouped("dns",            kDns,  "ipv4",   parse_old_dns,           parse_new_dns),
    regrouped("dns6",           kDns,  "ipv6",   parse_old_dns6,          parse_new_dns6),
    converted("ddns",                            parse_old_ddns,          parse_new_ddns,          kArray),
    converted("dhcp_opt_rule",                   parse_old_dhcp_opt_rule, parse_new_dhcp_opt_rule, kArray),
    converted("dlna",                            parse_old_dlna,          parse_new_dlna,          kObject),
    converted("gpon_settings",                   parse_old_gpon_settings, parse_new_gpon_settings, kObject),
    converted("httpd",                           parse_old_httpd,         parse_new_httpd,         kObject),
    converted("ipfilter",                        parse_old_ipfilter,      parse_new_ipfilter,      kArray),
    regrouped("ipsec",          kVpn,  "ipsec",  ipsec_to_vpn,            vpn_to_ipsec),
    converted("macfilter",                       parse_old_macfilter,     parse_new_macfilter,     kArray),
    converted("ntpclient",                       parse_old_ntpclient,     parse_new_ntpclient,     kObject),
    converted("tr069",                           parse_old_tr069,         parse_new_tr069,         kObject),
    converted("transmission",                    parse_old_transmission,  parse_new_transmission,  kObject),
    converted("urlfilter",                       parse_old_urlfilter,     parse_new_urlfilter,     kObject),
    converted("vserver",                         parse_old_vserver,       parse_new_vserver,       kArray),
    converted("watchdog",                        parse_old_watchdog,      parse_new_watchdog,      kObject),
    // Rebuilt towards the new layout only, which gives it a default; what the new one says goes back as it stands.
    converted("yandex",                          parse_old_yandex,        nullptr,                 kObject),
    converted("udpxy",                           parse_old_udpxy,         parse_new_udpxy,         kObject),
};
// clang-format on

bool has_section_of(json_t* old_root, Key group) {
    for (const Service& service : kServices)
        if (service.group == group && has(old_root, service.old_name)) return true;
    return false;
}

// A group is made when any of its sections is there, and then all its converters run: DNS has {} for an absent section.
// What they count is left out: a failed name server or tunnel never rejects a configuration on its way to the new layout;
// on the way back it does.
void group_to_new(json_t* old_root, Key group, json_t* services, k_err_t* err) {
    if (!has_section_of(old_root, group)) return;
    Json made = object();
    for (const Service& service : kServices)
        if (service.group == group) service.to_new(get(old_root, service.old_name), made.get(), err);
    set(services, group, std::move(made));
}

// What the converter towards old reads: the section, or the group that has it.
json_t* source_of(const Service& service, json_t* services) {
    if (service.group == kAlone) return get(services, service.new_name);
    json_t* const group = get(services, service.group);
    return has(group, service.new_name) ? group : nullptr;
}

}  // namespace

int k_cnvrt_get_services_from_old(json_t* old_root, json_t* services, k_err_t* err) {
    for (const Service& service : kServices)
        if (service.to_new == nullptr) carry(services, service.new_name, get(old_root, service.old_name));

    for (const Key group : {kDns, kVpn}) group_to_new(old_root, group, services, err);

    int failures = 0;
    for (const Service& service : kServices)
        if (service.to_new != nullptr && service.group == kAlone)
            failures += json_services_parser(get(old_root, service.old_name), service.new_name.text(), services,
                                             service.to_new, kObject, err);
    return failures;
}

int k_cnvrt_get_services_from_new(json_t* services, json_t* old_root, k_err_t* err) {
    for (const Service& service : kServices)
        if (service.to_old == nullptr) carry(old_root, service.old_name, get(services, service.new_name));

    int failures = 0;
    for (const Service& service : kServices)
        if (service.to_old != nullptr)
            failures += json_services_parser(source_of(service, services), service.old_name.text(), old_root,
                                             service.to_old, service.old_container, err);
    return failures;
}
