// The two halves of a bridge's service. Everything that is split (a service, its DHCP server, a host) has a table for
// each address family. Rejoining runs the IPv4 table first and the IPv6 table over it: where both entries have a field,
// that of the ipv6 entry stays. A field that the IPv6 table has towards new alone is written to both entries, and read
// back from the ip entry.
#include "ifaces/bridge_split.h"

#include "frame/nested.h"
#include "ifaces/addresses.h"

namespace kcnvrt {

namespace {

// A relay without an address is none.
int relay_to_old(json_t* destination, Key key, json_t* relay, const Report&) {
    if (!view_of(get(relay, "ip")).empty()) carry(destination, key, relay);
    return 0;
}

constexpr Word<ways::carry, relay_to_old> relay;

// clang-format off

constexpr auto kIpService = fields(
    //          old      ip entry
    carried    ("iface", "phy_iface"),
    carried    ("name"),
    carried    ("dhcp"),
    carried    ("auto"),
    carried    ("enable"),
    carried    ("dns_prim"),
    carried    ("dns_sec"),
    carried    ("gwip"),
    status     ("connection_status"),
    name_list  ("lock"),
    listed_ip  ("ip"),
    listed_mask("mask",  "ip"));

constexpr auto kIpv6Service = fields(
    //                  old           ipv6 entry
    carried            ("iface",      "phy_iface"),
    carried            ("name"),
    carried            ("dhcp"),
    carried            ("auto"),
    carried            ("enablev6",   "enable"),
    status             ("connection_status"),
    name_list_to_new   ("lock"),
    listed_ipv6_to_old ("ipv6"),
    listed_alias_to_old("alias_ipv6", "ipv6"));

constexpr auto kIpDhcpd = fields(
    carried("addn_hostname"),
    carried("lease"),
    carried("enable"),
    carried("dns_relay"),
    carried("gwip"),
    carried("start_ip"),
    carried("end_ip"),
    carried("tftp_ip"),
    carried("dns_prim"),
    carried("dns_sec"),
    relay  ("relay"),
    carried("DHCPConditionalServingPool"));

constexpr auto kIpv6Dhcpd = fields(
    //            old           "dhcpd" of the ipv6 entry
    carried      ("addn_hostname"),
    carried      ("leasev6"),
    carried      ("enablev6",   "enable"),
    carried      ("dhcp6_pd"),
    carried      ("dns_relay6", "dns_relay"),
    carried      ("prefix"),
    carried      ("start_ipv6"),
    carried      ("end_ipv6"),
    integer_field("modev6"),
    carried      ("DHCPConditionalServingPool"));

constexpr auto kIpHost = fields(
    carried      ("ip"),
    string_in_new("mac"),
    carried      ("host"),
    carried      ("mode"));

constexpr auto kIpv6Host = fields(
    carried       ("ipv6"),
    string_to_new ("mac"),
    carried_to_new("host"),
    carried_to_new("mode"));

// clang-format on

// The addresses of the ipv6 entry. A second address counts only beside a first one; alone it leaves an empty list.
void ipv6_addresses_to_new(json_t* old_service, json_t* ipv6_entry) {
    json_t* const first = get(old_service, "ipv6");
    json_t* const second = get(old_service, "alias_ipv6");
    if (first == nullptr && second == nullptr) return;
    ListBuilder list;
    const auto add = [&list](json_t* address) {
        Json entry = object();
        carry(entry.get(), "ipv6", address);
        list.add(std::move(entry));
    };
    if (first != nullptr) add(first);
    if (first != nullptr && second != nullptr) add(second);
    set(ipv6_entry, "ipv6", list.finish());
}

// A host with a wrong "mac" is reported once for each family.
int split_reserved(json_t* old_hosts, json_t* ip_dhcpd, json_t* ipv6_dhcpd, const Report& report) {
    int failures = 0;
    ListBuilder ip_hosts;
    ListBuilder ipv6_hosts;
    for (const auto [number, old_host] : elements(old_hosts)) {
        Json ip_host = object();
        Json ipv6_host = object();
        failures += to_new(kIpHost, old_host, ip_host.get(), report);
        failures += to_new(kIpv6Host, old_host, ipv6_host.get(), report);
        ip_hosts.add(std::move(ip_host));
        ipv6_hosts.add(std::move(ipv6_host));
    }
    set(ip_dhcpd, "reserved", ip_hosts.finish());
    set(ipv6_dhcpd, "reserved", ipv6_hosts.finish());
    return failures;
}

// The hosts of the ip entry decide which there are; a missing number leaves an empty host in its place.
int rejoin_reserved(json_t* ip_hosts, json_t* ipv6_hosts, json_t* old_dhcpd, const Report& report) {
    Json old_hosts = array();
    const auto rejoin = [&](int64_t number, json_t* ip_host, json_t* old_host) {
        const int failures = to_old(kIpHost, ip_host, old_host, report);
        return failures + to_old(kIpv6Host, entry_at(ipv6_hosts, number), old_host, report);
    };
    const int failures = append_every_number(ip_hosts, old_hosts.get(), report, rejoin);
    set(old_dhcpd, "reserved", std::move(old_hosts));
    return failures;
}

int split_dhcpd(json_t* old_dhcpd, json_t* ip_entry, json_t* ipv6_entry, const Report& report) {
    Json ip_dhcpd = object();
    Json ipv6_dhcpd = object();
    int failures = to_new(kIpDhcpd, old_dhcpd, ip_dhcpd.get(), report);
    failures += to_new(kIpv6Dhcpd, old_dhcpd, ipv6_dhcpd.get(), report);
    if (json_t* const hosts = get(old_dhcpd, "reserved"))
        failures += split_reserved(hosts, ip_dhcpd.get(), ipv6_dhcpd.get(), report);
    set(ip_entry, "dhcpd", std::move(ip_dhcpd));
    set(ipv6_entry, "dhcpd", std::move(ipv6_dhcpd));
    return failures;
}

int rejoin_dhcpd(json_t* ip_dhcpd, json_t* ipv6_dhcpd, json_t* old_service, const Report& report) {
    Json old_dhcpd = object();
    int failures = to_old(kIpDhcpd, ip_dhcpd, old_dhcpd.get(), report);
    failures += to_old(kIpv6Dhcpd, ipv6_dhcpd, old_dhcpd.get(), report);
    if (json_t* const hosts = get(ip_dhcpd, "reserved"))
        failures += rejoin_reserved(hosts, get(ipv6_dhcpd, "reserved"), old_dhcpd.get(), report);
    set(old_service, "dhcpd", std::move(old_dhcpd));
    return failures;
}

}  // namespace

int split_service(json_t* old_service, json_t* ip_entry, json_t* ipv6_entry, const Report& report) {
    int failures = to_new(kIpService, old_service, ip_entry, report);
    failures += to_new(kIpv6Service, old_service, ipv6_entry, report);
    ipv6_addresses_to_new(old_service, ipv6_entry);
    if (json_t* const dhcpd = get(old_service, "dhcpd")) failures += split_dhcpd(dhcpd, ip_entry, ipv6_entry, report);
    return failures;
}

int rejoin_service(json_t* ip_entry, json_t* ipv6_entry, json_t* old_service, const Report& report) {
    int failures = to_old(kIpService, ip_entry, old_service, report);
    failures += to_old(kIpv6Service, ipv6_entry, old_service, report);
    if (json_t* const dhcpd = get(ip_entry, "dhcpd"))
        failures += rejoin_dhcpd(dhcpd, get(ipv6_entry, "dhcpd"), old_service, report);
    return failures;
}

}  // namespace kcnvrt
