// Wi-Fi: the flat old object, in which both radios lie side by side, against a radio each.
#include "k_cnvrt/wifi.h"

#include "k_cnvrt.h"
#include "wifi/flat_entries.h"
#include "wifi/radio_blocks.h"

using namespace kcnvrt;

int k_cnvrt_get_wifi_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 0;
    carry(destination, "CountryCode", get(source, "CountryCode"));
    Json radios = object();
    int failures = 0;
    for (const bool is_5ghz : {false, true}) failures += radio_to_new({source, is_5ghz}, radios.get(), err);
    count_entries(radios.get());
    set(destination, "Radio", std::move(radios));
    return failures;
}

int k_cnvrt_get_wifi_from_new(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    carry(destination, "CountryCode", get(source, "CountryCode"));
    int failures = 0;
    for (const Member member : members(get(source, "Radio"))) {
        json_t* const radio = member.value;
        if (!json_is_object(radio)) continue;
        const bool is_5ghz = is_text(get(radio, "FrequencyBand"), band_name(true).view());
        failures += radio_to_old(radio, {destination, is_5ghz}, report);
    }
    return failures;
}
