// The filtered DNS. Towards the old layout the section is carried as a whole.
#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kFilteredDns = fields(
    carried        ("enabled"),
    text_or<"safe">("default"));
// clang-format on

}  // namespace

int parse_old_yandex(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kFilteredDns, source, destination, Report{__func__, err});
}
