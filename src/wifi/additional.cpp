// "Additional" of a radio: thresholds and modes.
#include <cinttypes>

#include "frame/named_number.h"
#include "frame/number.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// Protection: a code against a name. An unset code is the first.

// clang-format off
constexpr NamedNumber<8> kProtections[] = {
    // new       old
    {"auto",     0},
    {"enable",   1},
    {"disable",  2},
};
// clang-format on
static_assert(is_one_to_one(kProtections));

int protection_to_new(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not string", key.text());
    const std::string_view code = view_of(value);
    const auto* const protection = code.empty() ? &kProtections[0] : by_decimal(kProtections, code);
    if (protection == nullptr)
        return report.fail("Invalid field \"%s\", \"%s\" != [%s]", key.text(), text_of(value),
                           kNumbersOf<kProtections, "\"", ",">.text());
    set(additional, key, string(protection->name));
    return 0;
}

// The message names the plain key on both radios.
int protection_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (!json_is_string(value)) return 0;
    const auto* const protection = by_name(kProtections, view_of(value));
    if (protection == nullptr)
        return report.fail("Invalid field \"BGProtection\", \"%s\" != [%s]", text_of(value),
                           kNamesOf<kProtections, "\"", ", ">.text());
    set(wifi, key, string(Decimal{protection->number}));
    return 0;
}

// Preamble: a name, for which the old layout may also have a code, against whether it is short.

// clang-format off
constexpr NamedNumber<6> kPreambles[] = {
    // old     code, and whether it is short
    {"long",   false},
    {"short",  true},
};
// clang-format on
static_assert(is_one_to_one_with_booleans(kPreambles));

int preamble_to_new(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not string", key.text());
    const auto* const named = by_name(kPreambles, view_of(value));
    const auto* const preamble = named == nullptr ? by_decimal(kPreambles, view_of(value)) : named;
    if (preamble == nullptr)
        return report.fail("Invalid field \"%s\", string \"%s\" != [%s, %s]", key.text(), text_of(value),
                           kNumbersOf<kPreambles, "\"", ", ">.text(), kNamesOf<kPreambles, "\"", ", ">.text());
    set(additional, key, boolean(preamble->number != 0));
    return 0;
}

// The message names the plain key on both radios.
int preamble_to_old(json_t* wifi, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_boolean(value))
        return report.fail("Invalid field \"TxPreamble\". Is not boolean. He type is %d",
                           static_cast<int>(json_typeof(value)));
    set(wifi, key, string(by_number(kPreambles, json_is_true(value))->name));
    return 0;
}

// Band width: one code against three fields.

struct BandWidth {
    uint8_t code;
    char width[6];
    bool has_coexistance;
    char extension[6];
};

// clang-format off
constexpr BandWidth kBandWidths[] = {
    // code  width     coexistance  extension
    {0,      "20MHz",  false,       "auto"},
    {1,      "40MHz",  true,        "below"},
    {2,      "40MHz",  true,        "above"},
    {3,      "40MHz",  false,       "auto"},
    {4,      "80MHz",  false,       "auto"},
};
// clang-format on

constexpr const BandWidth* band_width_of(uint32_t code) {
    for (const BandWidth& band_width : kBandWidths)
        if (band_width.code == code) return &band_width;
    return nullptr;
}

// With coexistance the extension channel tells the band widths apart, without it the width.
constexpr std::string_view mark_of(const BandWidth& band_width) {
    return band_width.has_coexistance ? band_width.extension : band_width.width;
}

constexpr const BandWidth* band_width_of(bool has_coexistance, std::string_view mark) {
    for (const BandWidth& band_width : kBandWidths)
        if (band_width.has_coexistance == has_coexistance && mark_of(band_width) == mark) return &band_width;
    return nullptr;
}

constexpr bool every_band_width_leads_back() {
    for (const BandWidth& row : kBandWidths)
        if (band_width_of(row.code) != &row || band_width_of(row.has_coexistance, mark_of(row)) != &row) return false;
    return true;
}
static_assert(every_band_width_leads_back());

constexpr auto kCodes = listing<"", ",">([](auto add) {
    for (const BandWidth& band_width : kBandWidths) add(ByteDigits{band_width.code}.view());
});
constexpr auto kExtensions = listing<"", " or ">([](auto add) {
    for (const BandWidth& band_width : kBandWidths)
        if (band_width.has_coexistance) add(band_width.extension);
});
constexpr auto kWidths = listing<"", ", ">([](auto add) {
    for (const BandWidth& band_width : kBandWidths)
        if (!band_width.has_coexistance) add(band_width.width);
});

int code_to_band_width(json_t* additional, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    uint32_t code = 0;
    if (!read_strictly(view_of(value), code)) return report.fail("Invalid field \"BandWidth\", is not integer");
    const BandWidth* const band_width = band_width_of(code);
    if (band_width == nullptr)
        return report.fail("Invalid field \"BandWidth\", out of range - %" PRIu32 " != [%s]", code, kCodes.text());
    set(additional, key, string(band_width->width));
    set(additional, "HTCoexistance", boolean(band_width->has_coexistance));
    set(additional, "ExtensionChannel", string(band_width->extension));
    return 0;
}

int coexistent_to_old(json_t* additional, const OldRadio& old, const Report& report) {
    json_t* const extension = get(additional, "ExtensionChannel");
    if (!json_is_string(extension)) return 0;
    const BandWidth* const band_width = band_width_of(true, view_of(extension));
    if (band_width == nullptr)
        return report.fail_at(additional, "ExtensionChannel", "Invalid field \"ExtensionChannel\", %s != %s",
                              text_of(extension), kExtensions.text());
    old.write(OldPlace::kRadio, "BandWidth", string(Decimal{band_width->code}));
    return 0;
}

int exclusive_to_old(json_t* additional, const OldRadio& old, const Report& report) {
    json_t* const width = get(additional, "BandWidth");
    // The message speaks of another field; it has always been this one's.
    if (!json_is_string(width))
        return report.fail_at(additional, "BandWidth", "Invalid field \"BandWidth\", ExtensionChannel != \"auto\"");
    const BandWidth* const band_width = band_width_of(false, view_of(width));
    if (band_width == nullptr)
        return report.fail_at(additional, "BandWidth", "Invalid field \"BandWidth\", %s != [%s]", text_of(width),
                              kWidths.text());
    old.write(OldPlace::kRadio, "BandWidth", string(Decimal{band_width->code}));
    return 0;
}

int band_width_to_old(json_t* additional, const OldRadio& old, const Report& report) {
    json_t* const coexistance = get(additional, "HTCoexistance");
    if (!has(additional, "BandWidth") || coexistance == nullptr) return 0;
    if (!json_is_boolean(coexistance))
        return report.fail_at(additional, "HTCoexistance", "Invalid field \"HTCoexistance\" isn't JSON_BOOLEAN");
    if (json_is_true(coexistance)) return coexistent_to_old(additional, old, report);
    return exclusive_to_old(additional, old, report);
}

constexpr Word<protection_to_new, protection_to_old> protection;
constexpr Word<preamble_to_new, preamble_to_old> preamble;
constexpr Word<code_to_band_width, nullptr> band_width_to_new;

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
    protection       ("BGProtection"),
    text_or<"enable">("HTGI"),
    preamble         ("TxPreamble"),
    carried          ("igmpdrop"),
    carried          ("TxBeamforming"),
    carried          ("AdaptivityMode"),
    band_width_to_new("BandWidth"));

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
