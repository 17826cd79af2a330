// "MACFilter" of an SSID: who may connect.
#include <cinttypes>

#include "frame/list.h"
#include "frame/named_number.h"
#include "frame/number.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// The policy: a code against a name.

// clang-format off
constexpr NamedNumber<8> kPolicies[] = {
    // new       old
    {"disable",  0},
    {"allow",    1},
    {"deny",     2},
};
// clang-format on
static_assert(is_one_to_one(kPolicies));

int policy_code_to_new(json_t* filter, Key key, int64_t code, const Report& report) {
    const auto* const policy = by_number(kPolicies, code);
    // A negative code has always been shown as an unsigned one.
    if (policy == nullptr)
        return report.fail("Invalid field \"AccessPolicy\", out of range - %" PRIu64 " != [%s]",
                           static_cast<uint64_t>(code), kNumbersOf<kPolicies, "", ",">.text());
    set(filter, key, string(policy->name));
    return 0;
}

int policy_to_new(json_t* filter, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_integer(value)) return policy_code_to_new(filter, key, json_integer_value(value), report);
    if (!json_is_string(value)) return report.fail("Invalid field \"AccessPolicy\" has invalid type");
    uint32_t code = 0;
    if (json_string_length(value) != 0 && !read_strictly(view_of(value), code))
        return report.fail("Invalid field \"AccessPolicy\" isn't digit");
    return policy_code_to_new(filter, key, code, report);
}

int policy_to_old(json_t* element, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"AccessPolicy\", is not string");
    const auto* const policy = by_name(kPolicies, view_of(value));
    // The message has never had its closing bracket.
    if (policy == nullptr)
        return report.fail("Invalid field \"AccessPolicy\", value \"%s\" != [%s", text_of(value),
                           kNamesOf<kPolicies, "\"", ", ">.text());
    set(element, key, string(Decimal{policy->number}));
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

constexpr Word<policy_to_new, policy_to_old> policy;
constexpr Word<addresses_to_new, nullptr> addresses;

// clang-format off
constexpr auto kMacFilter = element_fields(
    //        old                  new
    policy   ("AccessPolicy"),
    carried  ("MacFilterList"),
    // Takes the place of the list above, and is not written again.
    addresses("AccessControlList", "MacFilterList"));
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
