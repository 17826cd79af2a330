// A 3G modem, and its dial-up services.
#include "ifaces/layer2.h"
#include "ifaces/named_entries.h"
#include "ifaces/port_list.h"
#include "ifaces/ppp_session.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kModem = fields(
    carried       ("enable"),
    carried       ("is_wan"),
    carried       ("dongle_type"),
    carried       ("max_count"),
    port_list     ("port"),
    integer_in_new("mode"),
    string_field  ("mac"));
// clang-format on

// What a dial-up service has beyond a PPP session. Unlike other PPP services it names no interface in "l2_iface".
// clang-format off
constexpr auto kDialUp = fields(
    carried("apn"),
    carried("dial_num"),
    carried("ppp_state"),
    carried("ondemand"),
    carried("pppoe_pass_through"),
    carried("is_wan"));
// clang-format on

constexpr char kDialUpAuthor[] = "parse_ppp_services_for3g";

int dial_up_to_new(json_t* old_service, json_t* entry, const Report& report) {
    int failures = to_new(kDialUp, old_service, entry, report);
    failures += to_new(kPppSession, old_service, entry, report);
    failures += to_new(kPppReporting, old_service, entry, report);
    return failures;
}

int dial_up_to_old(json_t* entry, json_t* old_service, const Report& report) {
    int failures = to_old(kDialUp, entry, old_service, report);
    failures += to_old(kPppSession, entry, old_service, report);
    failures += to_old(kPppReporting, entry, old_service, report);
    return failures;
}

}  // namespace

int modem_3g_to_new(json_t* old_iface, json_t* entry, k_err_t* err) {
    const Report of_dial_up{kDialUpAuthor, err};
    const auto convert = [&](json_t* old_service, json_t* service) {
        return dial_up_to_new(old_service, service, of_dial_up);
    };
    const int failures = to_new(kModem, old_iface, entry, Report{"parse_3g", err});
    return failures + only_group_to_new(old_iface, "ppp", entry, convert);
}

int modem_3g_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    const Report of_dial_up{kDialUpAuthor, err};
    const auto convert = [&](json_t* service, json_t* old_service) {
        return dial_up_to_old(service, old_service, of_dial_up);
    };
    const int failures = to_old(kModem, entry, old_iface, Report{"parse_new_3g", err});
    return failures + only_group_to_old(entry, "ppp", old_iface, convert);
}

}  // namespace kcnvrt
