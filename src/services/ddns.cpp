// The dynamic DNS accounts.
#include "frame/nested.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kAccount = fields(
    //             old         new
    password      ("pass",     "user_pass"),
    integer_field ("period"),
    carried       ("usr_name", "user_name"),
    carried       ("host_name"),
    carried       ("system"),
    carried       ("pid"),
    carried       ("iface"),
    carried       ("service"));
// clang-format on

}  // namespace

int parse_old_ddns(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_new(kAccount, source, destination, Report{__func__, err});
}

int parse_new_ddns(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_old(kAccount, source, destination, Report{__func__, err});
}
