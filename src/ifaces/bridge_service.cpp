// A service of the type "bridge" of an Ethernet or ATM interface.
#include "frame/list.h"
#include "ifaces/services.h"

namespace kcnvrt {

namespace {

constexpr char kAuthor[] = "parse_service_bridge";

// clang-format off
constexpr auto kBridgeService = fields(
    //        old      new
    carried  ("iface", "phy_iface"),
    carried  ("name"),
    carried  ("contype"),
    carried  ("belong"),
    carried  ("enable"),
    carried  ("is_wan"),
    carried  ("gwif"),
    carried  ("contag"),
    carried  ("metric"),
    name_list("lock"),
    status   ("connection_status"));
// clang-format on

}  // namespace

int bridge_service_to_new(json_t* old_service, json_t* entry, k_err_t* err) {
    return to_new(kBridgeService, old_service, entry, Report{kAuthor, err});
}

int bridge_service_to_old(json_t* entry, json_t* old_service, json_t*, k_err_t* err) {
    // No failure of a bridge service counts in this direction.
    uncounted(err, [&] { to_old(kBridgeService, entry, old_service, Report{kAuthor, err}); });
    return 0;
}

}  // namespace kcnvrt
