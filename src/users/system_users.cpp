// The users of the operating system.
#include "frame/nested.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kSystemUser = fields(
    carried      ("user"),
    password     ("password"),
    integer_field("rule"));
// clang-format on

}  // namespace

int k_cnvrt_get_sysusers_from_new(json_t* source, json_t* destination, k_err_t* err) {
    return list_to_old(kSystemUser, source, destination, Report{__func__, err});
}

int k_cnvrt_get_sysusers_from_old(json_t* source, json_t* destination, k_err_t* err) {
    return source == nullptr ? 0 : list_to_new(kSystemUser, source, destination, Report{__func__, err});
}
