// The rules by which the device may be reached from outside.
#include "frame/nested.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kRule = fields(
    integer_field("dport"),
    integer_field("sport"),
    carried      ("ips"),
    carried      ("source_mask"),
    carried      ("ipv6"));
// clang-format on

// An older form: one rule that is not in a list. An empty one is no rule, and neither is anything but an object.
int single_to_new(json_t* rule, json_t* destination, k_err_t* err) {
    int failures = 0;
    Json converted{k_cnvrt_get_remote_from_old_element(rule, &failures, err)};
    if (is_empty(converted.get())) return failures;
    set_max_instance(destination, 1);
    set(destination, "1", std::move(converted));
    return failures;
}

}  // namespace

json_t* k_cnvrt_get_remote_from_old_element(json_t* rule, int* errors, k_err_t* err) {
    Json converted = object();
    const int failures = to_new(kRule, rule, converted.get(), Report{__func__, err});
    if (errors != nullptr) *errors += failures;
    return converted.release();
}

int k_cnvrt_get_remote_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (!json_is_array(source)) return single_to_new(source, destination, err);
    return list_to_new(kRule, source, destination, Report{"k_cnvrt_get_remote_from_old_element", err});
}

int k_cnvrt_get_remote_from_new(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_old(kRule, source, destination, Report{__func__, err});
}
