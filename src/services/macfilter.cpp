// The MAC filter. Unlike in other lists of rules, an old rule names the number of its entry, and gaps leave nothing on
// the way back.
#include <algorithm>

#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kRule = fields(
    //           old       new
    string_field("mac"),
    carried     ("state"),
    carried     ("enable", "action"));
// clang-format on

}  // namespace

int parse_old_macfilter(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    int failures = 0;
    json_int_t largest = 0;
    for (const auto [position, old_rule] : elements(source)) {
        json_t* const id = get(old_rule, "id");
        if (!json_is_integer(id)) {
            failures += report.fail_at(old_rule, "id", "Invalid field \"id\", is not integer");
            report.place_entry(source, static_cast<int64_t>(position));
            continue;
        }
        Json rule = object();
        failures += to_new(kRule, old_rule, rule.get(), report);
        set(destination, Decimal{json_integer_value(id)}, std::move(rule));
        largest = std::max(largest, json_integer_value(id));
    }
    set(destination, "max_instance", integer(largest));
    return failures;
}

int parse_new_macfilter(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    int failures = 0;
    for (const auto [number, rule] : Instances{source}) {
        Json old_rule = object();
        failures += to_old(kRule, rule, old_rule.get(), report);
        set(old_rule.get(), "id", integer(number));
        append(destination, std::move(old_rule));
    }
    return failures;
}
