// The URL filter: its setting and its list of addresses.
#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

constexpr auto kEnable = fields(boolean_in_both("enable"));

// The type of a filter in the old layout: this, or anything else.
constexpr char kExclude[] = "Exclude";

int setting_to_new(json_t* setting, json_t* filter, const Report& report) {
    if (setting == nullptr) return 0;
    const int failures = to_new(kEnable, setting, filter, report);
    set(filter, "exclude", boolean(is_text(get(setting, "type"), kExclude)));
    return failures;
}

int setting_to_old(json_t* filter, json_t* old_filter, const Report& report) {
    json_t* const exclude = get(filter, "exclude");
    if (!has(filter, "enable") && exclude == nullptr) return 0;
    Json setting = object();
    const int failures = to_old(kEnable, filter, setting.get(), report);
    set(setting.get(), "type", string(json_is_true(exclude) ? kExclude : "Include"));
    set(old_filter, "setting", std::move(setting));
    return failures;
}

constexpr auto kAddresses = fields(element_list("url_list"));

}  // namespace

int parse_old_urlfilter(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    const int failures = setting_to_new(get(source, "setting"), destination, report);
    return failures + to_new(kAddresses, source, destination, report);
}

int parse_new_urlfilter(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    const int failures = setting_to_old(source, destination, report);
    return failures + to_old(kAddresses, source, destination, report);
}
