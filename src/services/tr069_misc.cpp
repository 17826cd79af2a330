// The objects that the TR-069 client has shown to its server.
#include "services/tr069_misc.h"

#include "frame/nested.h"
#include "services/text_objects.h"

namespace kcnvrt {

namespace {

// A copy that is sure to have a status. One of another type is reported, and stays.
constexpr ways::Text kDefaultStatus = "Enabled";

int copy_with_status(json_t* destination, Key key, json_t* value, Key status, const Report& report) {
    if (value == nullptr) return 0;
    Json copy = json_is_object(value) ? shallow_copy(value) : object();
    json_t* const given = get(value, status);
    if (given == nullptr) set(copy.get(), status, string(kDefaultStatus.view()));
    const int failures = cross(ways::string_or<kDefaultStatus>, value, status, copy.get(), status, report);
    set(destination, key, std::move(copy));
    return failures;
}

int filter_to_new(json_t* misc, Key key, json_t* filter, const Report& report) {
    return copy_with_status(misc, key, filter, "FilterStatus", report);
}

int marking_to_new(json_t* misc, Key key, json_t* marking, const Report& report) {
    return copy_with_status(misc, key, marking, "MarkingStatus", report);
}

// A bridge without a VLAN is null in the old layout and in this VLAN in the new one.
constexpr json_int_t kNoVlan = 1;

int vlan_to_new(json_t* bridge, Key key, json_t* vlan, const Report& report) {
    if (vlan == nullptr) return 0;
    if (!json_is_null(vlan) && !json_is_integer(vlan))
        return report.fail("Invalid field \"VLANID\"! Is not NULL ot INTEGER");
    set(bridge, key, json_is_null(vlan) ? integer(kNoVlan) : share(vlan));
    return 0;
}

int vlan_to_old(json_t* bridge, Key key, json_t* vlan, const Report& report) {
    if (vlan == nullptr) return 0;
    if (!json_is_integer(vlan)) return report.fail("Error field \"VLANID\"! Is not integer!");
    set(bridge, key, json_integer_value(vlan) == kNoVlan ? null() : share(vlan));
    return 0;
}

// The default status is given towards the new layout only.
constexpr Word<filter_to_new, ways::carry> filter;
constexpr Word<marking_to_new, ways::carry> marking;
constexpr Word<vlan_to_new, vlan_to_old> vlan;

// clang-format off

constexpr auto kConnection = fields(
    carried("mio_id"),
    carried("PortMapping"));

constexpr auto kWanDevice = fields(
    carried                     ("pos"),
    instances_field<kConnection>("ipconn"),
    instances_field<kConnection>("pppconn"));

constexpr auto kBridge = fields(
    carried("Port"),
    carried("pos"),
    carried("BridgeKey"),
    carried("BridgeName"),
    carried("BridgeEnable"),
    carried("BridgeStatus"),
    carried("BridgeStandard"),
    vlan   ("VLANID"));

constexpr auto kMisc = fields(
    carried                    ("previousurl"),
    carried                    ("rebootcmdkey"),
    carried                    ("schedulecmdkey"),
    instances_field<kWanDevice>("wandevice"),
    text_routes                ("route_17_33"),
    filter                     ("Filter"),
    marking                    ("Marking"),
    carried                    ("wc"),
    carried                    ("landevice"),
    carried                    ("AvailableInterface"),
    instances_field<kBridge>   ("bridge"),
    text_arp                   ("arp"));

// clang-format on

}  // namespace

namespace ways {

int misc_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    return walk_member(to_new, kMisc, destination, key, value, report.under("parse_misc"));
}

int misc_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    return walk_member(to_old, kMisc, destination, key, value, report.under("parse_misc"));
}

}  // namespace ways

}  // namespace kcnvrt
