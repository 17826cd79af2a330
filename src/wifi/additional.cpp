// "Additional" of a radio: thresholds and modes.
#include <cinttypes>

#include "wifi/codes.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// Protection: a code against a name. An unset code is the first.

constexpr Codes<3> kProtections{{"auto", "enable", "disable"}};
static_assert(kProtections.are_distinct());

int protection_to_new(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not string", key.text());
    const std::string_view text = view_of(value).empty() ? "0" : view_of(value);
    if (text != "0" && text != "1" && text != "2")
        return report.fail("Invalid field \"%s\", \"%s\" != [\"0\",\"1\",\"2\"]", key.text(), text_of(value));
    set(additional, key, string(kProtections.name_of(static_cast<size_t>(text[0] - '0'))));
    return 0;
}

// The message names the plain key on both radios.
int protection_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (!json_is_string(value)) return 0;
    const int code = kProtections.code_of(view_of(value));
    if (code == kProtections.kNone)
        return report.fail("Invalid field \"BGProtection\", \"%s\" != [\"auto\", \"enable\", \"disable\"]",
                           text_of(value));
    set(wifi, key, string(Decimal{code}));
    return 0;
}

// Preamble: "long" or "short", for which the old layout may also have "0" and "1", against whether it is short.

int preamble_to_new(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not string", key.text());
    const std::string_view text = view_of(value);
    const bool is_short = text == "short" || text == "1";
    if (!is_short && text != "long" && text != "0")
        return report.fail("Invalid field \"%s\", string \"%s\" != [\"0\", \"1\", \"long\", \"short\"]", key.text(),
                           text_of(value));
    set(additional, key, boolean(is_short));
    return 0;
}

// The message names the plain key on both radios.
int preamble_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_boolean(value))
        return report.fail("Invalid field \"TxPreamble\". Is not boolean. He type is %d",
                           static_cast<int>(json_typeof(value)));
    set(wifi, key, json_is_true(value) ? string("short") : string("long"));
    return 0;
}

// Band width: one code against three fields.

struct BandWidth {
    char width[6];
    bool has_coexistance;
    char extension[6];
};

// clang-format off
// In the order of their codes.
constexpr BandWidth kBandWidths[] = {
    // width   coexistance  extension
    {"20MHz",  false,       "auto"},
    {"40MHz",  true,        "below"},
    {"40MHz",  true,        "above"},
    {"40MHz",  false,       "auto"},
    {"80MHz",  false,       "auto"},
};
// clang-format on

// With coexistence the extension channel tells the codes apart, without it the width.
constexpr std::string_view mark_of(const BandWidth& band_width) {
    return band_width.has_coexistance ? band_width.extension : band_width.width;
}

constexpr int band_width_code(bool has_coexistance, std::string_view mark) {
    int code = 0;
    for (const BandWidth& band_width : kBandWidths) {
        if (band_width.has_coexistance == has_coexistance && mark_of(band_width) == mark) return code;
        ++code;
    }
    return -1;
}

constexpr bool every_band_width_leads_back() {
    int code = 0;
    for (const BandWidth& band_width : kBandWidths)
        if (band_width_code(band_width.has_coexistance, mark_of(band_width)) != code++) return false;
    return true;
}
static_assert(every_band_width_leads_back());

int band_width_to_new(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    uint32_t code = 0;
    if (!read_strictly(view_of(value), code)) return report.fail("Invalid field \"BandWidth\", is not integer");
    if (code >= std::size(kBandWidths))
        return report.fail("Invalid field \"BandWidth\", out of range - %" PRIu32 " != [0,1,2,3,4]", code);
    const BandWidth& band_width = kBandWidths[code];
    set(additional, key, string(band_width.width));
    set(additional, "HTCoexistance", boolean(band_width.has_coexistance));
    set(additional, "ExtensionChannel", string(band_width.extension));
    return 0;
}

int coexistent_to_old(json_t* extension, const OldRadio& old, const Report& report) {
    if (!json_is_string(extension)) return 0;
    const int code = band_width_code(true, view_of(extension));
    if (code < 0) return report.fail("Invalid field \"ExtensionChannel\", %s != below or above", text_of(extension));
    old.write(Place::kRadio, "BandWidth", string(Decimal{code}));
    return 0;
}

int exclusive_to_old(json_t* width, const OldRadio& old, const Report& report) {
    // The message speaks of another field; it has always been this one's.
    if (!json_is_string(width)) return report.fail("Invalid field \"BandWidth\", ExtensionChannel != \"auto\"");
    const int code = band_width_code(false, view_of(width));
    if (code < 0) return report.fail("Invalid field \"BandWidth\", %s != [20MHz, 40MHz, 80MHz]", text_of(width));
    old.write(Place::kRadio, "BandWidth", string(Decimal{code}));
    return 0;
}

int band_width_to_old(json_t* additional, const OldRadio& old, const Report& report) {
    json_t* const width = get(additional, "BandWidth");
    json_t* const coexistance = get(additional, "HTCoexistance");
    if (width == nullptr || coexistance == nullptr) return 0;
    if (!json_is_boolean(coexistance)) return report.fail("Invalid field \"HTCoexistance\" isn't JSON_BOOLEAN");
    if (json_is_true(coexistance)) return coexistent_to_old(get(additional, "ExtensionChannel"), old, report);
    return exclusive_to_old(width, old, report);
}

// clang-format off
// The two directions visit the numbers in different orders.
constexpr auto kNumbersToNew = radio_fields(
    integer_field("StationKeepAlive"),
    integer_field("FragThreshold"),
    integer_field("BeaconPeriod"),
    integer_field("RTSThreshold"),
    integer_field("DtimPeriod"),
    integer_field("TxPower"));
constexpr auto kNumbersToOld = radio_fields(
    integer_field("TxPower"),
    integer_field("DtimPeriod"),
    integer_field("BeaconPeriod"),
    integer_field("RTSThreshold"),
    integer_field("FragThreshold"),
    integer_field("StationKeepAlive"));

constexpr auto kModes = radio_fields(
    field<protection_to_new,         protection_to_old>("BGProtection"),
    field<ways::string_or<"enable">, ways::carry>      ("HTGI"),
    field<preamble_to_new,           preamble_to_old>  ("TxPreamble"),
    carried("igmpdrop"),
    carried("TxBeamforming"),
    carried("AdaptivityMode"),
    field<band_width_to_new, nullptr>("BandWidth"));
// clang-format on

}  // namespace

int additional_to_new(const OldRadio& old, json_t* radio, const Report& report) {
    Json additional = object();
    int failures = to_new(kNumbersToNew, old, additional.get(), report);
    failures += to_new(kModes, old, additional.get(), report);
    set_filled(radio, "Additional", std::move(additional));
    return failures;
}

int additional_to_old(json_t* additional, const OldRadio& old, const Report& report) {
    int failures = to_old(kModes, additional, old, report);
    failures += band_width_to_old(additional, old, report);
    failures += to_old(kNumbersToOld, additional, old, report);
    return failures;
}

}  // namespace kcnvrt
