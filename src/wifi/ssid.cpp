// The SSIDs of a radio: an array against a numbered list.
#include "frame/nested.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kSsid = element_fields(
    //            old      new
    carried      ("HideSSID"),
    carried      ("BwRestrict"),
    carried      ("WifiBroadcast"),
    carried      ("Isolation"),
    carried      ("GuestAccess"),
    carried      ("BSSID", "Bssid"),
    string_in_new("SSID",  "Ssid"),
    integer_field("MaxStaNum"));

// The queues' parameters stand once in the old object: every SSID of both radios gets them, and the last one that has
// them sets them.
constexpr auto kWmm = placed_fields(
    shared    (carried("APAifsn")),
    shared    (carried("APCwmin")),
    shared    (carried("APCwmax")),
    shared    (carried("APTxop")),
    shared    (carried("APACM")),
    shared    (carried("AckPolicy")),
    shared    (carried("BSSAifsn")),
    shared    (carried("BSSCwmax")),
    shared    (carried("BSSCwmin")),
    shared    (carried("BSSTxop")),
    shared    (carried("BSSACM")),
    of_element(carried("WmmCapable")));

constexpr auto kTraffic = element_fields(
    integer_field("TxRate"),
    integer_field("NoForwarding"),
    integer_field("NoForwardingBTNBSSID"));
// clang-format on

int wmm_to_new(const OldRadio& old, json_t* ssid, const Report& report) {
    Json wmm = object();
    const int failures = to_new(kWmm, old, wmm.get(), report);
    set_filled(ssid, "WMM", std::move(wmm));
    return failures;
}

int ssid_to_new(const OldRadio& old, json_t* ssid, const Report& report) {
    int failures = to_new(kSsid, old, ssid, report);
    failures += security_to_new(old, ssid, report);
    failures += wmm_to_new(old, ssid, report);
    failures += to_new(kTraffic, old, ssid, report);
    failures += mac_filter_to_new(old, ssid, report);
    return failures;
}

int ssid_to_old(json_t* ssid, const OldRadio& old, const Report& report) {
    int failures = to_old(kSsid, ssid, old, report);
    failures += security_to_old(get(ssid, "Security"), old, report);
    failures += to_old(kWmm, get(ssid, "WMM"), old, report);
    failures += to_old(kTraffic, ssid, old, report);
    failures += mac_filter_to_old(get(ssid, "MACFilter"), old, report);
    return failures;
}

}  // namespace

int ssids_to_new(const OldRadio& old, json_t* radio, const Report& report) {
    const Report of_ssid = report.under("parseMbssid");
    int failures = 0;
    ListBuilder ssids;
    for (const auto [number, element] : elements(old.read(OldPlace::kRadio, "mbssid"))) {
        Json ssid = object();
        failures += ssid_to_new(old.with_element(element), ssid.get(), of_ssid);
        ssids.add(std::move(ssid));
    }
    if (ssids.count() != 0) set(radio, "mbssid", ssids.finish());
    return failures;
}

int ssids_to_old(json_t* ssids, const OldRadio& old, const Report& report) {
    const Report of_ssid = report.under("parseMbssid");
    Json array = kcnvrt::array();
    // A missing number keeps its place, so that positions never shift.
    const int failures = append_every_number(ssids, array.get(), report, [&](int64_t, json_t* ssid, json_t* element) {
        return ssid_to_old(ssid, old.with_element(element), of_ssid);
    });
    old.write(OldPlace::kRadio, "mbssid", std::move(array));
    return failures;
}

}  // namespace kcnvrt
