// "Security" of an SSID. The RADIUS server and the rekeying stand once for each radio in the old layout: every SSID of
// the radio gets them, and the last one that has them sets them.
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// clang-format off

// Two numbers stand here twice: the directions visit them at different places, which is the order of the messages.
constexpr auto kSecurity = placed_fields(
    //                            old             new
    of_radio  (integer_to_old    ("RADIUS_Port")),
    of_radio  (integer_to_old    ("RekeyInterval")),
    of_element(boolean_field     ("PreAuth")),
    of_element(integer_field     ("IEEE8021X")),
    of_radio  (integer_to_new    ("RADIUS_Port")),
    of_element(integer_field     ("DefaultKeyID", "DefaultKeyId")),
    of_radio  (integer_to_new    ("RekeyInterval")),
    shared    (integer_field     ("session_timeout_interval")),
    of_element(text_or<"WPA2PSK">("AuthMode")),
    of_element(text_or<"AES">    ("EncrypType")),
    of_radio  (text_or<"TIME">   ("RekeyMethod")),
    of_element(carried           ("WPAPSK")),
    of_radio  (carried           ("RADIUS_Server")),
    of_radio  (carried           ("RADIUS_Key")));

constexpr auto kKey = element_fields(
    //      old          new
    carried("Key%dStr",  "Str"),
    carried("Key%dType", "Type"));

// clang-format on

}  // namespace

int security_to_new(const OldRadio& old, json_t* ssid, const Report& report) {
    Json security = object();
    int failures = to_new(kSecurity, old, security.get(), report);
    failures += complete_entries_to_new(kKey, old, security.get(), "Key", report);
    set_filled(ssid, "Security", std::move(security));
    return failures;
}

int security_to_old(json_t* security, const OldRadio& old, const Report& report) {
    int failures = to_old(kSecurity, security, old, report);
    failures += entries_to_old(kKey, get(security, "Key"), old, report);
    return failures;
}

}  // namespace kcnvrt
