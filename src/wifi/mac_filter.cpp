// "MACFilter" of an SSID: who may connect.
#include <cinttypes>

#include "frame/list.h"
#include "wifi/codes.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// The policy: a code against a name.

constexpr Codes<3> kPolicies{{"disable", "allow", "deny"}};
static_assert(kPolicies.are_distinct());

int policy_number_to_new(json_t* filter, Key key, uint64_t number, const Report& report) {
    // A negative number is shown as the unsigned one that it is kept as.
    if (number >= std::size(kPolicies.names))
        return report.fail("Invalid field \"AccessPolicy\", out of range - %" PRIu64 " != [0,1,2]", number);
    set(filter, key, string(kPolicies.name_of(number)));
    return 0;
}

int policy_to_new(json_t* filter, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_integer(value))
        return policy_number_to_new(filter, key, static_cast<uint64_t>(json_integer_value(value)), report);
    if (!json_is_string(value)) return report.fail("Invalid field \"AccessPolicy\" has invalid type");
    uint32_t number = 0;
    if (json_string_length(value) != 0 && !read_strictly(view_of(value), number))
        return report.fail("Invalid field \"AccessPolicy\" isn't digit");
    return policy_number_to_new(filter, key, number, report);
}

int policy_to_old(json_t* element, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"AccessPolicy\", is not string");
    const int code = kPolicies.code_of(view_of(value));
    // The message has no closing bracket.
    if (code == kPolicies.kNone)
        return report.fail("Invalid field \"AccessPolicy\", value \"%s\" != [\"disable\", \"allow\", \"deny\"",
                           text_of(value));
    set(element, key, string(Decimal{code}));
    return 0;
}

// A list of bare addresses: every entry starts inactive and without a name.
int addresses_to_new(json_t* filter, Key key, json_t* addresses, const Report&) {
    if (addresses == nullptr) return 0;
    ListBuilder list;
    for (const auto [number, address] : elements(addresses)) {
        Json station = object();
        carry(station.get(), "mac", address);
        set(station.get(), "hostname", string(""));
        set(station.get(), "active", boolean(false));
        list.add(std::move(station));
    }
    set(filter, key, list.finish());
    return 0;
}

// clang-format off
constexpr auto kMacFilter = element_fields(
    field<policy_to_new, policy_to_old>("AccessPolicy"),
    carried("MacFilterList"),
    // Takes the place of the list above, and is not written again.
    field<addresses_to_new, nullptr>("AccessControlList", "MacFilterList"));
// clang-format on

}  // namespace

int mac_filter_to_new(const OldRadio& old, json_t* ssid, const Report& report) {
    Json filter = object();
    const int failures = to_new(kMacFilter, old, filter.get(), report);
    set_filled(ssid, "MACFilter", std::move(filter));
    return failures;
}

int mac_filter_to_old(json_t* filter, const OldRadio& old, const Report& report) {
    return to_old(kMacFilter, filter, old, report);
}

}  // namespace kcnvrt
