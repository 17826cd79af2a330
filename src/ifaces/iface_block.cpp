// The whole interface block: the interface list, and the settings that stand beside it.
#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/ifaces.h"

using namespace kcnvrt;

namespace {

// A section of its own inside the block: left out when its handler fails, which is no failure of the block.
template <k_cnvrt_handler_t Handler>
int section_unless_failed(json_t* destination, Key key, json_t* section, const Report& report) {
    Json converted = object();
    uncounted(report.err(), [&] {
        if (Handler(section, converted.get(), report.err()) == 0) set(destination, key, std::move(converted));
    });
    return 0;
}

constexpr Word<section_unless_failed<k_cnvrt_parse_old_phys_ifaces>, section_unless_failed<k_cnvrt_parse_new_phys>>
    phys_ifaces;

// clang-format off
constexpr auto kEnvelope = fields(
    integer_in_both("max_table_id"),
    carried        ("pppoe_pass_through"),
    carried        ("usbmodem_autoconnect"),
    phys_ifaces    ("phys_ifaces"),
    name_list      ("ppp_inf"),
    name_list      ("lan"));
// clang-format on

}  // namespace

int k_cnvrt_get_ifaces_from_old(json_t* source, json_t* destination, k_err_t* err) {
    Json block = object();
    int failures = to_new(kEnvelope, source, block.get(), Report{__func__, err});
    failures += k_cnvrt_get_sections_ifaces_from_old(get(source, "ifaces"), block.get(), err);
    set(destination, "Ifaces", std::move(block));
    return failures;
}

int k_cnvrt_get_ifaces_from_new(json_t* source, json_t* destination, k_err_t* err) {
    json_t* const block = get(get(source, "Device"), "Ifaces");
    if (block == nullptr) return 0;
    int failures = to_old(kEnvelope, block, destination, Report{__func__, err});
    Json old_ifaces = object();
    failures += k_cnvrt_get_sections_ifaces_from_new(block, old_ifaces.get(), err);
    set(destination, "ifaces", std::move(old_ifaces));
    return failures;
}
