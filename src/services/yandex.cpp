#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// Towards the old layout the section is copied as a whole.
// clang-format off
constexpr auto kFilteredDns = fields(
    carried("enabled"),
    field<ways::string_or<"safe">, nullptr>("default"));
// clang-format on

}  // namespace

int parse_old_yandex(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kFilteredDns, source, destination, Report{__func__, err});
}
