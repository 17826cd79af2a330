// The signal thresholds of a band: three numbers, which the old layout keeps under names of their own for each band.
#include "wifi/roaming_band.h"

#include "frame/list.h"
#include "frame/report.h"
#include "k_tr.h"
#include "shortage.h"
#include "wifi/unpack.h"

namespace kcnvrt {

namespace {

// A band: its name in the new layout and its fields in the old one.
struct Band {
    Key name;
    Name quality_limit;
    Name quality_width;
    Name max_timeout;
};

constexpr Band k24GHz = {"2.4GHz", "quality_limit", "quality_width", "max_timeout"};
constexpr Band k5GHz = {"5GHz", "quality_limit_5g", "quality_width_5g", "max_timeout_5g"};

struct Thresholds {
    int quality_limit = 0;
    int quality_width = 0;
    int max_timeout = 0;
};

bool has_none(json_t* old_roaming, const Band& band) {
    return !has(old_roaming, band.quality_limit) && !has(old_roaming, band.quality_width) &&
           !has(old_roaming, band.max_timeout);
}

int read_old(json_t* old_roaming, const Band& band, Thresholds& thresholds, const Report& report) {
    json_error_t error;
    const int result =
        unpack(old_roaming, error, "{s: i, s: i, s: i}", band.quality_limit.text(), &thresholds.quality_limit,
               band.quality_width.text(), &thresholds.quality_width, band.max_timeout.text(), &thresholds.max_timeout);
    if (result == 0) return 0;
    report.fail("Invalid field '%s'|'%s'|'%s', is not integer value", band.quality_limit.text(),
                band.quality_width.text(), band.max_timeout.text());
    const Unpacked read[] = {{band.quality_limit, 'i'}, {band.quality_width, 'i'}, {band.max_timeout, 'i'}};
    place_misfit(old_roaming, read, report);
    return 1;
}

int check(bool is_in_range, json_t* old_roaming, Key key, const Report& report) {
    // The quotes are stray, and have always been.
    return is_in_range ? 0 : report.fail_at(old_roaming, key, "Field '%s'|' range error", key.text());
}

int check_ranges(json_t* old_roaming, const Band& band, const Thresholds& thresholds, const Report& report) {
    const auto [limit, width, timeout] = thresholds;
    int failures = check(timeout >= 0, old_roaming, band.max_timeout, report);
    failures += check(limit >= 0 && limit <= 100, old_roaming, band.quality_limit, report);
    failures += check(width >= -50 && width <= 50, old_roaming, band.quality_width, report);
    return failures;
}

// A band with a failure is set all the same.
int band_to_new(json_t* old_roaming, Key number, const Band& band, json_t* bands, const Report& report) {
    Thresholds thresholds;
    int failures = read_old(old_roaming, band, thresholds, report);
    failures += check_ranges(old_roaming, band, thresholds, report);
    set(bands, number,
        Json{noted(json_pack("{s: s, s: i, s: i, s: i}",                //
                             "Band", band.name.text(),                  //
                             "MaximumTimeout", thresholds.max_timeout,  //
                             "QualityLimit", thresholds.quality_limit,  //
                             "QualityWidth", thresholds.quality_width))});
    return failures;
}

// A band that cannot be read whole is written with what was read.
void band_to_old(json_t* settings, json_t* old_roaming) {
    const char* name = nullptr;
    Thresholds thresholds;
    json_error_t error;
    unpack(settings, error, "{s: s, s: i, s: i, s: i}",  //
           "Band", &name,                                //
           "MaximumTimeout", &thresholds.max_timeout,    //
           "QualityLimit", &thresholds.quality_limit,    //
           "QualityWidth", &thresholds.quality_width);
    const Band& band = name != nullptr && name == k5GHz.name.view() ? k5GHz : k24GHz;
    set(old_roaming, band.max_timeout, integer(thresholds.max_timeout));
    set(old_roaming, band.quality_limit, integer(thresholds.quality_limit));
    set(old_roaming, band.quality_width, integer(thresholds.quality_width));
}

}  // namespace

int bands_to_new(json_t* old_roaming, json_t* bands, k_err_t* err) {
    const Report report{"parseRoamingBand", err};
    int failures = band_to_new(old_roaming, "1", k24GHz, bands, report);
    if (!has_none(old_roaming, k5GHz)) failures += band_to_new(old_roaming, "2", k5GHz, bands, report);
    set_max_instance(bands, static_cast<uint32_t>(size_of(bands)));
    return failures;
}

void bands_to_old(json_t* bands, json_t* old_roaming) {
    for (const Member band : members(bands))
        if (k_tr_str_is_instance(band.name.text())) band_to_old(band.value, old_roaming);
}

}  // namespace kcnvrt
