// RIP: objects keyed by the name of an interface against a numbered list.
#include "frame/list.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kRip = fields(
    carried      ("opmode"),
    carried      ("enable"),
    carried      ("name"),
    integer_field("version"));
// clang-format on

}  // namespace

int k_cnvrt_get_rip_from_new(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    int failures = 0;
    for (const auto [name, instance] : members(source)) {
        if (!json_is_object(instance)) continue;
        Json rip = object();
        failures += to_old(kRip, instance, rip.get(), report);
        set_named(destination, get(instance, "ifname_l3"), std::move(rip));
    }
    return failures;
}

int k_cnvrt_get_rip_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (source == nullptr) return 0;
    const Report report{__func__, err};
    const SortedMembers ifaces{source};
    if (ifaces.failed()) return report.fail("Error allocated memory!\n");
    int failures = 0;
    ListBuilder instances{destination};
    for (const auto& [name, rip] : ifaces) {
        if (!json_is_object(rip)) {
            instances.skip();
            continue;
        }
        Json instance = object();
        set(instance.get(), "ifname_l3", string(name));
        failures += to_new(kRip, rip, instance.get(), report);
        instances.add(std::move(instance));
    }
    instances.finish();
    return failures;
}
