// "Wds" of a radio: the links to other access points.
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kWds = radio_fields(
    //            old           new
    integer_field("WdsEnable",  "Enable"),
    carried      ("WdsPhyMode", "PhyMode"));

constexpr auto kLink = placed_fields(
    //                          old                new
    read_shared(text_or<"NONE">("Wds%dEncrypType", "EncrypType")),
    read_shared(carried        ("Wds%dKey",        "Key")),
    read_shared(carried        ("Wds%dMac",        "Mac")));
// clang-format on

}  // namespace

int wds_to_new(const OldRadio& old, json_t* radio, const Report& report) {
    Json wds = object();
    int failures = to_new(kWds, old, wds.get(), report);
    failures += complete_entries_to_new(kLink, old, wds.get(), "Array", report);
    set_filled(radio, "Wds", std::move(wds));
    return failures;
}

int wds_to_old(json_t* wds, const OldRadio& old, const Report& report) {
    int failures = to_old(kWds, wds, old, report);
    failures += entries_to_old(kLink, get(wds, "Array"), old, report);
    return failures;
}

}  // namespace kcnvrt
