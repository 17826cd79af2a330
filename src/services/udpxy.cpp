// The multicast proxy.
#include "frame/field.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kInterfaces = fields(
    carried("enabled"),
    carried("iface_lan"),
    carried("iface_wan"),
    carried("default_iface"));

// The directions take the numbers in orders of their own.

constexpr auto kNumbersToNew = fields(
    integer_field("port"),
    integer_field("maxcli"),
    integer_field("bufcli"),
    // A second time, on purpose: a bad "maxcli" is reported twice and counts 2.
    integer_field("maxcli"),
    integer_field("socbuf"));

constexpr auto kNumbersToOld = fields(
    integer_field("bufcli"),
    integer_field("maxcli"),
    integer_field("port"),
    integer_field("socbuf"));
// clang-format on

}  // namespace

int parse_old_udpxy(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    return to_new(kInterfaces, source, destination, report) + to_new(kNumbersToNew, source, destination, report);
}

int parse_new_udpxy(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    return to_old(kInterfaces, source, destination, report) + to_old(kNumbersToOld, source, destination, report);
}
