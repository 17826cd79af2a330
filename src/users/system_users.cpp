#include "frame/list.h"
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
    const Report report{__func__, err};
    const EveryNumber numbers{source, report};
    int failures = numbers.failures();
    for (const auto [number, instance] : numbers) {
        Json user = object();
        failures += to_old(kSystemUser, instance, user.get(), report);
        append(destination, std::move(user));
    }
    return failures;
}

int k_cnvrt_get_sysusers_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 0;
    const Report report{__func__, err};
    int failures = 0;
    ListBuilder list{destination};
    for (const auto [number, user] : elements(source)) {
        Json instance = object();
        failures += to_new(kSystemUser, user, instance.get(), report);
        list.add(std::move(instance));
    }
    list.finish();
    return failures;
}
