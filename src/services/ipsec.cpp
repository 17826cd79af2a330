// IPsec: its switch and its tunnels.
#include "k_cnvrt/ipsec.h"

#include "frame/nested.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kTunnel = fields(
    carried      ("alg"),
    carried      ("hash"),
    carried      ("peer"),
    carried      ("iface"),
    carried      ("nat_t"),
    carried      ("int_id"),
    carried      ("tcpmss"),
    carried      ("dhgroup"),
    carried      ("alg_ph2"),
    carried      ("auth_alg"),
    carried      ("my_ident"),
    carried      ("pfsgroup"),
    carried      ("anonymous"),
    carried      ("dpd_delay"),
    carried      ("enable_pfs"),
    carried      ("dpd_maxfail"),
    carried      ("tcpmss_value"),
    carried      ("exchange_mode"),
    carried      ("enable_routing"),
    carried      ("my_ident_value"),
    carried      ("sainfo_lifetime"),
    carried      ("remote_lifetime"),
    password     ("key"),
    element_list ("nets"),
    element_list ("status"));

constexpr auto kIpsec = fields(
    carried            ("enabled"),
    list_field<kTunnel>("tunnels"));
// clang-format on

}  // namespace

int parse_old_ipsec(json_t* source, json_t* destination, k_err_t* err) {
    return to_new(kIpsec, source, destination, Report{__func__, err});
}

int parse_new_ipsec(json_t* source, json_t* destination, k_err_t* err) {
    return to_old(kIpsec, source, destination, Report{__func__, err});
}
