// The default SSIDs of both bands.
#include "frame/field.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kDefaultSsid = fields(
    //      old                 new
    carried("default_ssid_2.4", "Default_ssid_2.4"),
    carried("default_ssid_5.0", "Default_ssid_5.0"));
// clang-format on

}  // namespace

// Unlike other sections this one is wrapped in a member of its own name, even when it is empty.

int k_cnvtr_get_default_ssid_from_new(json_t* source, json_t* destination, k_err_t* err) {
    Json bands = object();
    const int failures = to_old(kDefaultSsid, source, bands.get(), Report{__func__, err});
    set(destination, "default_ssid", std::move(bands));
    return failures;
}

int k_cnvtr_get_default_ssid_from_old(json_t* source, json_t* destination, k_err_t* err) {
    Json bands = object();
    const int failures = to_new(kDefaultSsid, source, bands.get(), Report{__func__, err});
    set(destination, "Default_ssid", std::move(bands));
    return failures;
}
