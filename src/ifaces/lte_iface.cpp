// An LTE modem, and its IP services.
#include "frame/list.h"
#include "ifaces/addresses.h"
#include "ifaces/dot1x.h"
#include "ifaces/ip_settings.h"
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/port_list.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kLte = fields(
    carried       ("enable"),
    carried       ("is_wan"),
    carried       ("max_count"),
    port_list     ("port"),
    integer_in_new("mode"),
    string_field  ("mac"));

constexpr auto kAddress = fields(
    //          old     new
    listed_ip  ("ip"),
    listed_mask("mask", "ip"),
    carried    ("apn"));

constexpr auto kSettings = ip_settings(carried);

// The lock list stands before the 802.1X block because that is the order of their messages towards the old layout.
constexpr auto kReporting = fields(
    name_list("lock"),
    status   ("connection_status"),
    dot1x    ("8021x"));
// clang-format on

int service_to_new(json_t* old_service, json_t* service, const Report& report) {
    int failures = to_new(kAddress, old_service, service, report);
    failures += to_new(kSettings, old_service, service, report);
    failures += to_new(kReporting, old_service, service, report);
    return failures;
}

int service_to_old(json_t* service, json_t* old_service, const Report& report) {
    int failures = to_old(kAddress, service, old_service, report);
    failures += to_old(kSettings, service, old_service, report);
    failures += to_old(kReporting, service, old_service, report);
    return failures;
}

}  // namespace

int lte_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const Report report{"parse_lte", err};
    const Report of_service = report.under("parse_ip_services_forLte");
    const auto convert = [&](json_t* old_service, json_t* service) {
        return service_to_new(old_service, service, of_service);
    };
    const int failures = to_new(kLte, old_iface, entry, report);
    return failures + only_group_to_new(old_iface, "ip", entry, convert);
}

int lte_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const Report report{"parse_new_lte", err};
    const auto convert = [&](json_t* service, json_t* old_service) {
        return service_to_old(service, old_service, report);
    };
    const int failures = to_old(kLte, entry, old_iface, report);
    return failures + only_group_to_old(entry, "ip", old_iface, convert);
}

}  // namespace kcnvrt
