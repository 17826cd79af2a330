// The services of the types "ppp", "pppv6" and "pppdual" of an Ethernet or ATM interface.
#include "ifaces/ppp_session.h"
#include "ifaces/services.h"

namespace kcnvrt {

namespace {

// clang-format off

// What a PPP service has beyond a PPP session.
constexpr auto kPppService = fields(
    carried("ppp_state"),
    carried("ondemand"),
    carried("pppoe_pass_through"),
    carried("is_wan"));

// What PPP over IPv6 and dual-stack PPP have beyond plain PPP.
constexpr auto kPppIpv6 = fields(
    carried("ipv6_auto"),
    carried("slaac"),
    carried("ipv6_by_slaac"),
    carried("ipv6_by_dhcpv6"),
    carried("ipv6_by_dhcpv6_pd"),
    carried("gwifv6"),
    carried("dns_from_dhcpv6"),
    carried("static_ipv6"),
    carried("dns_primv6"),
    carried("dns_secv6"),
    carried("gwipv6"),
    carried("ipv6"));

// clang-format on

int service_to_new(json_t* old_service, json_t* entry, const Report& report) {
    int failures = to_new(kPppReporting, old_service, entry, report);
    failures += to_new(kPppSession, old_service, entry, report);
    failures += to_new(kPppService, old_service, entry, report);
    return failures;
}

int service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, const Report& report) {
    carry(old_service, "l2_iface", l2_iface);
    int failures = to_old(kPppReporting, entry, old_service, report);
    failures += to_old(kPppSession, entry, old_service, report);
    failures += to_old(kPppService, entry, old_service, report);
    return failures;
}

int ipv6_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, const Report& report) {
    int failures = service_to_old(entry, old_service, l2_iface, report);
    failures += to_old(kPppIpv6, entry, old_service, report);
    return failures;
}

}  // namespace

int ppp_service_to_new(json_t* old_service, json_t* entry, k_err_t* err) {
    return service_to_new(old_service, entry, Report{"parse_service_ppp", err});
}

int pppv6_service_to_new(json_t* old_service, json_t* entry, k_err_t* err) {
    const Report report{"parse_service_pppv6", err};
    int failures = service_to_new(old_service, entry, report);
    failures += to_new(kPppIpv6, old_service, entry, report);
    return failures;
}

int ppp_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    return service_to_old(entry, old_service, l2_iface, Report{"parse_services_ppp", err});
}

int pppv6_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    return ipv6_service_to_old(entry, old_service, l2_iface, Report{"parse_services_pppv6", err});
}

int pppdual_service_to_old(json_t* entry, json_t* old_service, json_t* l2_iface, k_err_t* err) {
    return ipv6_service_to_old(entry, old_service, l2_iface, Report{"parse_services_pppdual", err});
}

}  // namespace kcnvrt
