// A radio: its own settings, and its blocks in the order in which each direction visits them.
#include <cinttypes>

#include "frame/number.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// A channel: "auto" or a decimal string against an integer, 0 for "auto".

constexpr char kAuto[] = "auto";
constexpr int64_t kAutoChannel = 0;

int channel_to_new(json_t* radio, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not string", key.text());
    uint32_t channel = kAutoChannel;
    if (!is_text(value, kAuto) && !read_strictly(view_of(value), channel))
        return report.fail("Invalid field \"%s\", string \"%s\" != number or \"%s\"", key.text(), text_of(value),
                           kAuto);
    set(radio, key, integer(channel));
    return 0;
}

// The messages name the plain key on both radios.
int channel_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_integer(value)) return report.fail("Invalid field \"Channel\", is not integer");
    const int64_t channel = json_integer_value(value);
    if (channel < 0) return report.fail("Invalid field \"Channel\", Channel [%" PRId64 "] < 0", channel);
    set(wifi, key, channel == kAutoChannel ? string(kAuto) : string(Decimal{channel}));
    return 0;
}

constexpr Word<channel_to_new, channel_to_old> channel;

// clang-format off
constexpr auto kRadio = radio_fields(
    carried      ("RadioOff"),
    carried      ("mbssidCurrent"),
    carried      ("ReselectAutoChannel"),
    carried      ("PeriodReselectChannel"),
    channel      ("Channel"),
    integer_field("WirelessMode"));
// clang-format on

// The new layout has this on each SSID as well, and only that one is read from the old layout.
constexpr auto kBroadcast = radio_fields(carried_to_old("WifiBroadcast"));

}  // namespace

int radio_to_new(const OldRadio& old, json_t* radios, k_err_t* err) {
    const Report report{"parseG", err};
    Json owned = object();
    json_t* const radio = owned.get();
    int failures = to_new(kRadio, old, radio, report);
    failures += additional_to_new(old, radio, report);
    failures += ssids_to_new(old, radio, report);
    if (old.is_5ghz && is_empty(radio)) return failures;
    failures += wds_to_new(old, radio, report);
    failures += wps_to_new(old, radio, report);
    failures += client_mode_to_new(old, radio, report);
    set(radio, "FrequencyBand", string(band_name(old.is_5ghz)));
    set(radios, old.is_5ghz ? Key{"2"} : Key{"1"}, std::move(owned));
    return failures;
}

int radio_to_old(json_t* radio, const OldRadio& old, const Report& report) {
    int failures = to_old(kRadio, radio, old, report);
    failures += additional_to_old(get(radio, "Additional"), old, report);
    failures += to_old(kBroadcast, radio, old, report);
    failures += wds_to_old(get(radio, "Wds"), old, report);
    failures += wps_to_old(get(radio, "Wsc"), old, report);
    failures += client_mode_to_old(get(radio, "ApCli"), old, report);
    failures += ssids_to_old(get(radio, "mbssid"), old, report);
    return failures;
}

}  // namespace kcnvrt
