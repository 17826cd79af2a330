// "Wsc" of a radio: Wi-Fi protected setup.
#include "frame/named_number.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// Whether it is on: a code against a boolean.

// clang-format off
constexpr NamedNumber<2> kModes[] = {
    // old  new
    {"0",   false},
    {"7",   true},
};
// clang-format on
static_assert(is_one_to_one_with_booleans(kModes));

int enable_to_new(json_t* wps, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"WscConfMode\", it isn't string.");
    const auto* const mode = by_name(kModes, view_of(value));
    if (mode == nullptr) return report.fail("Invalid field \"WscConfMode\", it invalid string.");
    set(wps, key, boolean(mode->number != 0));
    return 0;
}

int enable_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_boolean(value)) return report.fail("Invalid field \"WscEnable\", is not boolean");
    set(wifi, key, string(by_number(kModes, json_is_true(value))->name));
    return 0;
}

// Towards old the PIN is written under both names. Towards new it is the default PIN, unless the device's own is empty:
// the table carries the default one, and an empty one takes its place.
int empty_pin_to_new(json_t* wps, Key key, json_t* value, const Report&) {
    if (is_text(value, "")) carry(wps, key, value);
    return 0;
}

constexpr Word<enable_to_new, enable_to_old> enable;
constexpr Word<empty_pin_to_new, ways::carry> device_pin;

// clang-format off
constexpr auto kWps = placed_fields(
    //                     old              new
    of_radio   (enable    ("WscConfMode",   "Enable")),
    read_shared(carried   ("WscConfigured", "Configured")),
    read_shared(carried   ("WscDefaultPin", "DevPin")),
    read_shared(device_pin("WscDevPin",     "DevPin")));
// clang-format on

}  // namespace

int wps_to_new(const OldRadio& old, json_t* radio, const Report& report) {
    Json wps = object();
    const int failures = to_new(kWps, old, wps.get(), report);
    set(radio, "Wsc", std::move(wps));
    return failures;
}

int wps_to_old(json_t* wps, const OldRadio& old, const Report& report) {
    return to_old(kWps, wps, old, report);
}

}  // namespace kcnvrt
