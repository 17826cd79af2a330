// The physical interfaces: the radios and the names of the LAN and WAN ports.
#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/ifaces.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kPorts = fields(
    name_list("lans"),
    name_list("wans"));
// clang-format on

Json radio(json_t* name, int64_t mhz) {
    Json entry = object();
    carry(entry.get(), "name", name);
    set(entry.get(), "MHz", integer(mhz));
    return entry;
}

// The 2.4 GHz radio comes first in the new layout. In the old one the plain name is that of the 5 GHz radio where there
// are two, and of the only radio where there is one.
Json radios_to_new(json_t* old_section) {
    json_t* const wifi = get(old_section, "wifi");
    json_t* const wifi_2g = get(old_section, "wifi_2G");
    ListBuilder radios;
    radios.add(radio(wifi_2g == nullptr ? wifi : wifi_2g, 2400));
    if (wifi_2g != nullptr) radios.add(radio(wifi, 5000));
    return radios.finish();
}

// Any other count of radios is none.
void radios_to_old(json_t* radios, json_t* old_section) {
    const auto name_at = [radios](int64_t number) { return get(entry_at(radios, number), "name"); };
    switch (json_integer_value(get(radios, "max_instance"))) {
        case 2:
            carry(old_section, "wifi", name_at(2));
            carry(old_section, "wifi_2G", name_at(1));
            break;
        case 1:
            carry(old_section, "wifi", name_at(1));
            break;
    }
}

}  // namespace

int k_cnvrt_parse_old_phys_ifaces(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 1;
    set(destination, "wifi", radios_to_new(source));
    to_new(kPorts, source, destination, Report{__func__, err});
    return 0;
}

int k_cnvrt_parse_new_phys(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 1;
    radios_to_old(get(source, "wifi"), destination);
    // Only an absent section is a failure; a list beyond the bound is reported and written empty.
    const Report report{__func__, err};
    uncounted(err, [&] { to_old(kPorts, source, destination, report); });
    return 0;
}
