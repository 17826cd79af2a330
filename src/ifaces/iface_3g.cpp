#include "ifaces/blocks.h"
#include "ifaces/entries.h"
#include "ifaces/layer2.h"
#include "ifaces/ppp_session.h"

namespace kcnvrt {

namespace {

// The old layout has the mode as a text or as a number, and gets it back as it stands.
KCNVRT_FIELD_WORD(modem_mode, ways::integer_to_new, ways::carry)

// clang-format off
constexpr auto kModem = fields(
    carried     ("enable"),
    carried     ("is_wan"),
    carried     ("dongle_type"),
    carried     ("max_count"),
    port_list   ("port"),
    modem_mode  ("mode"),
    string_field("mac"));
// clang-format on

// What a dial-up service has beyond a PPP session. It names no interface in "l2_iface", as other PPP services do.
// clang-format off
constexpr auto kDialUp = fields(
    carried("apn"),
    carried("dial_num"));
// clang-format on

constexpr char kDialUpAuthor[] = "parse_ppp_services_for3g";

int dial_up_to_new(json_t* old_service, json_t* entry, const Report& report) {
    int failures = to_new(kDialUp, old_service, entry, report);
    failures += to_new(kPppSession, old_service, entry, report);
    failures += to_new(kPppCredentials, old_service, entry, report);
    return failures;
}

int dial_up_to_old(json_t* entry, json_t* old_service, const Report& report) {
    int failures = to_old(kDialUp, entry, old_service, report);
    failures += to_old(kPppSession, entry, old_service, report);
    failures += to_old(kPppCredentials, entry, old_service, report);
    return failures;
}

int dial_ups_to_new(json_t* old_services, json_t* new_iface, k_err_t* err) {
    const Report report{kDialUpAuthor, err};
    int failures = 0;
    Json new_services = object();
    // Written even when it is empty, unlike the groups of wired interfaces.
    set(new_services.get(), "ppp",
        services_of_type(old_services, "ppp", failures, [&](json_t* old_service, json_t* entry) {
            return dial_up_to_new(old_service, entry, report);
        }));
    set(new_iface, "services", std::move(new_services));
    return failures;
}

int dial_ups_to_old(json_t* new_services, json_t* old_iface, k_err_t* err) {
    const Report report{kDialUpAuthor, err};
    Json old_services = object();
    const int failures =
        entries_to_old(get(new_services, "ppp"), "ifname_l3", "ppp", old_services.get(),
                       [&](json_t* entry, json_t* old_service) { return dial_up_to_old(entry, old_service, report); });
    set(old_iface, "services", std::move(old_services));
    return failures;
}

int modem_to_old(json_t* entry, json_t* old_iface, k_err_t* err) {
    int failures = to_old(kModem, entry, old_iface, Report{"parse_new_3g", err});
    if (json_t* const services = get(entry, "services")) failures += dial_ups_to_old(services, old_iface, err);
    return failures;
}

}  // namespace

int modem_3g_to_new(Key name, uint32_t number, json_t* old_iface, json_t* group, k_err_t* err) {
    Json entry = named_entry("ifname_l2", name);
    int failures = to_new(kModem, old_iface, entry.get(), Report{"parse_3g", err});
    if (json_t* const services = get(old_iface, "services")) failures += dial_ups_to_new(services, entry.get(), err);
    set(group, Decimal{number}, std::move(entry));
    return failures;
}

int modem_3g_to_old(json_t* group, json_t* old_ifaces, k_err_t* err) {
    if (!has_instances(group)) return 0;
    return entries_to_old(group, "ifname_l2", "3g", old_ifaces,
                          [err](json_t* entry, json_t* old_iface) { return modem_to_old(entry, old_iface, err); });
}

}  // namespace kcnvrt
