// The IP filter: rules by address, port and protocol.
#include "frame/named_number.h"
#include "frame/nested.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr NamedNumber<6> kActions[] = {
    // new     old
    {"Allow",  0},
    {"Deny",   1},
};
// clang-format on
static_assert(is_one_to_one(kActions));

int action_to_new(json_t* rule, Key key, json_t* action, const Report& report) {
    if (action == nullptr) return 0;
    if (!json_is_integer(action)) return report.fail("Invalid field \"action\", is not int");
    const auto* const known = by_number(kActions, json_integer_value(action));
    if (known == nullptr)
        return report.fail("Invalid field \"action\", number != %s", kNumbersOf<kActions, "", " or ">.text());
    set(rule, key, string(known->name));
    return 0;
}

int action_to_old(json_t* rule, Key key, json_t* action, const Report& report) {
    if (action == nullptr) return 0;
    if (!json_is_string(action)) return report.fail("Invalid field \"action\", is not string.");
    const auto* const known = by_name(kActions, view_of(action));
    if (known == nullptr)
        return report.fail("Invalid field \"action\", is not %s", kNamesOf<kActions, "\"", " or ">.text());
    set(rule, key, integer(known->number));
    return 0;
}

std::string_view type_of_address(std::string_view address) {
    constexpr auto kNone = std::string_view::npos;
    if (address.find('-') != kNone) return "IPRange";
    return address.find('/') != kNone ? "IPPrefix" : "IPAddress";
}

int address_type_to_new(json_t* rule, Key key, json_t* address, const Report&) {
    if (json_is_string(address)) set(rule, key, string(type_of_address(view_of(address))));
    return 0;
}

constexpr char kIpv6[] = "IPv6";

int version_to_new(json_t* rule, Key key, json_t* is_ipv6, const Report&) {
    set(rule, key, string(json_is_true(is_ipv6) ? kIpv6 : "IPv4"));
    return 0;
}

int version_to_old(json_t* rule, Key key, json_t* version, const Report&) {
    if (is_text(version, kIpv6)) set(rule, key, boolean(true));
    return 0;
}

constexpr Word<action_to_new, action_to_old> action;
constexpr Word<address_type_to_new, nullptr> address_type;
constexpr Word<version_to_new, version_to_old> version;

// clang-format off
constexpr auto kRule = fields(
    //           old        new
    carried     ("ports"),
    carried     ("portd"),
    carried     ("proto"),
    carried     ("state"),
    carried     ("ipd"),
    carried     ("ips"),
    action      ("action"),
    address_type("ipd",     "ipdType"),
    address_type("ips",     "ipsType"),
    version     ("is_ipv6", "ipVersion"));
// clang-format on

}  // namespace

int parse_old_ipfilter(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_new(kRule, source, destination, Report{__func__, err});
}

int parse_new_ipfilter(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    return append_every_number(source, destination, report, [&report](int64_t number, json_t* rule, json_t* old_rule) {
        set(old_rule, "id", integer(number));
        return to_old(kRule, rule, old_rule, report);
    });
}
