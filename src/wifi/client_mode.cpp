// "ApCli": a radio as the client of another access point. The old layout has one client, on the radio that it names.
#include <cinttypes>

#include "frame/number.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

constexpr int kHighestKeyId = 4;

int default_key_to_new(json_t* client, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return report.fail("Invalid field \"ApCliDefaultKeyId\", is not string value");
    uint32_t number = 0;
    if (json_string_length(value) != 0 && !read_strictly(view_of(value), number))
        return report.fail("Invalid field \"ApCliDefaultKeyId\", %s not constains digits", text_of(value));
    if (number > kHighestKeyId)
        return report.fail("Invalid field \"ApCliDefaultKeyId\", %" PRIu32 " not in range [0-%d]", number,
                           kHighestKeyId);
    set(client, key, integer(number));
    return 0;
}

// 0, which stands for no key, is written under the name that both radios share; any other number under the radio's own
// name, although only the shared one is ever read. Stored configurations depend on it.
int default_key_to_old(json_t* client, const OldRadio& old, const Report& report) {
    json_t* const value = get(client, "DefaultKeyId");
    if (value == nullptr) return 0;
    if (!json_is_integer(value))
        return report.fail_at(client, "DefaultKeyId", "Invalid field \"DefaultKeyId\", is not integer");
    const int64_t number = json_integer_value(value);
    if (number < 0 || number > kHighestKeyId)
        return report.fail_at(client, "DefaultKeyId", "Invalid field \"DefaultKeyId\", %" PRId64 " not in range [0-%d]",
                              number, kHighestKeyId);
    if (number == 0)
        old.write(OldPlace::kShared, "ApCliDefaultKeyId", string(""));
    else
        old.write(OldPlace::kRadio, "ApCliDefaultKeyId", string(Decimal{number}));
    return 0;
}

constexpr Word<default_key_to_new, nullptr> default_key;

// clang-format off
constexpr auto kClient = shared_fields(
    //              old                  new
    carried        ("ApCliEnable",       "Enable"),
    carried        ("ApCliWPAPSK",       "WPAPSK"),
    carried        ("ApCliSsid",         "Ssid"),
    carried        ("ApCliBssid",        "Bssid"),
    text_or<"NONE">("ApCliEncrypType",   "EncrypType"),
    text_or<"OPEN">("ApCliAuthMode",     "AuthMode"),
    // Written back by a function of its own.
    default_key    ("ApCliDefaultKeyId", "DefaultKeyId"));

constexpr auto kKey = shared_fields(
    //      old               new
    carried("ApCliKey%dType", "Type"),
    carried("ApCliKey%dStr",  "Str"));
// clang-format on

// How the old layout names a radio, with the blank.
constexpr std::string_view range_of(const OldRadio& old) {
    return old.is_5ghz ? "5 GHz" : "2.4 GHz";
}

// The old layout has room for one client. One that is enabled is written over those before it, any other only as long
// as none before it said "Enable". A field that it lacks keeps the value from before.
bool is_written(json_t* client, json_t* wifi) {
    return client != nullptr && (json_is_true(get(client, "Enable")) || !has(wifi, "ApCliEnable"));
}

}  // namespace

int client_mode_to_new(const OldRadio& old, json_t* radio, const Report& report) {
    if (!is_text(old.read(OldPlace::kShared, "ApCliRangeFreq"), range_of(old))) return 0;
    Json client = object();
    int failures = to_new(kClient, old, client.get(), report);
    Json keys = object();
    failures += entries_to_new(kKey, old, keys.get(), report);
    if (!is_empty(keys.get())) {
        count_entries(keys.get());
        set(client.get(), "Key", std::move(keys));
    }
    set_filled(radio, "ApCli", std::move(client));
    return failures;
}

int client_mode_to_old(json_t* client, const OldRadio& old, const Report& report) {
    if (!is_written(client, old.wifi)) return 0;
    old.write(OldPlace::kShared, "ApCliRangeFreq", string(range_of(old)));
    int failures = to_old(kClient, client, old, report);
    failures += default_key_to_old(client, old, report);
    failures += entries_to_old(kKey, get(client, "Key"), old, report);
    return failures;
}

}  // namespace kcnvrt
