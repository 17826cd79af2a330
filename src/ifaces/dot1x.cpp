// The 802.1X settings of a service. The old layout has types here, too.
#include "ifaces/dot1x.h"
#include "frame/nested.h"

namespace kcnvrt::ways {

namespace {

// clang-format off
constexpr auto kDot1x = fields(
    boolean_in_old("enable"),
    integer_in_old("eap_method"),
    carried       ("login"),
    password      ("passwd"));
// clang-format on

constexpr const char* kAuthor = "parse_8021x";

}  // namespace

int dot1x_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    return walk_member(to_new, kDot1x, destination, key, value, report.under(kAuthor));
}

int dot1x_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    return walk_member(to_old, kDot1x, destination, key, value, report.under(kAuthor));
}

}  // namespace kcnvrt::ways
