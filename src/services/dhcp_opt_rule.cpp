// The rules for DHCP options.
#include "frame/nested.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kRule = fields(
    // "" stays "" towards the old layout, unlike other texts.
    string_in_both("ip"),
    carried       ("port"));
// clang-format on

}  // namespace

int parse_old_dhcp_opt_rule(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_new(kRule, source, destination, Report{__func__, err});
}

int parse_new_dhcp_opt_rule(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_old(kRule, source, destination, Report{__func__, err});
}
