// The GPON registration.
#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kRegistration = fields(
    carried ("loid"),
    password("loid_password"),
    password("ploam_password"));
// clang-format on

}  // namespace

int parse_old_gpon_settings(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kRegistration, source, destination, Report{__func__, err});
}

int parse_new_gpon_settings(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kRegistration, source, destination, Report{__func__, err});
}
