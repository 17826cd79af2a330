// VLAN groups: the ports that can be grouped, and each VLAN with its member ports.
#include "frame/list.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// The old layout writes this VLAN identifier as null.
constexpr json_int_t kNoVlan = 1;

int vid_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (!json_is_null(value)) return ways::integer_to_new(destination, key, value, report);
    set(destination, key, integer(kNoVlan));
    return 0;
}

int vid_to_old(json_t* destination, Key key, json_t* value, const Report&) {
    if (value == nullptr) return 0;
    set(destination, key, json_is_integer(value) && json_integer_value(value) == kNoVlan ? null() : share(value));
    return 0;
}

constexpr Word<vid_to_new, vid_to_old> vid;

// clang-format off
constexpr auto kVlan = fields(
    //              old    new
    carried        ("name"),
    carried        ("dest"),
    vid            ("vid"),
    integer_in_new ("wanidx"),
    boolean_in_both("en",  "enable"),
    carried        ("ifname"));
// clang-format on

// Towards the old layout.

// A VLAN's ports by name. Each repeats the VLAN's one priority.
Json ports_to_old(json_t* ports, json_t* priority) {
    Json by_name = object();
    for (const auto [name, instance] : members(ports)) {
        if (!json_is_object(instance)) continue;
        Json port = object();
        carry(port.get(), "tag", get(instance, "tag"));
        carry(port.get(), "qos", priority);
        set_named(by_name.get(), get(instance, "name"), std::move(port));
    }
    return by_name;
}

int vlan_to_old(int64_t position, json_t* instance, json_t* vlans, const Report& report) {
    Json vlan = object();
    set(vlan.get(), "pos", integer(position));
    if (instance == nullptr) set(vlan.get(), "en", boolean(false));
    const int failures = to_old(kVlan, instance, vlan.get(), report);
    if (json_t* const ports = get(instance, "ports"))
        set(vlan.get(), "ports", ports_to_old(ports, get(instance, "vlanprio")));
    append(vlans, std::move(vlan));
    return failures;
}

// Towards the new layout.

// Ports of a VLAN in the order of their names. The priority of the last one becomes the VLAN's.
int ports_to_new(json_t* ports, json_t* vlan, const Report& report) {
    constexpr size_t kLongestName = 63;
    int failures = 0;
    ListBuilder list;
    for (const auto& [name, port] : SortedMembers{ports}) {
        if (name.length() > kLongestName) {
            failures +=
                report.fail_at(ports, name, "Invalid field \"ports\", name of %zu characters is longer than %zu",
                               name.length(), kLongestName);
            continue;
        }
        Json instance = object();
        set(instance.get(), "name", string(name));
        carry(instance.get(), "tag", get(port, "tag"));
        failures += cross(ways::integer_to_new, port, "qos", vlan, "vlanprio", report);
        list.add(std::move(instance));
    }
    set(vlan, "ports", list.finish());
    return failures;
}

// The order of the list is the VLANs' identity: a position that does not match ends it.
int check_position(json_t* old_vlan, size_t position, const Report& report) {
    json_t* const pos = get(old_vlan, "pos");
    if (pos == nullptr || json_integer_value(pos) == static_cast<json_int_t>(position)) return 0;
    return report.fail_at(old_vlan, "pos", "Invalid field \"pos\", %lld != %zu",
                          static_cast<long long>(json_integer_value(pos)), position);
}

int vlans_to_new(json_t* vlans, json_t* destination, const Report& report) {
    int failures = 0;
    ListBuilder list;
    for (const auto [number, old_vlan] : elements(vlans)) {
        Json vlan = object();
        failures += to_new(kVlan, old_vlan, vlan.get(), report);
        failures += ports_to_new(get(old_vlan, "ports"), vlan.get(), report);
        if (check_position(old_vlan, list.count(), report) != 0) {
            ++failures;
            break;
        }
        list.add(std::move(vlan));
    }
    set(destination, "vlans", list.finish());
    return failures;
}

}  // namespace

int k_cnvrt_get_vlan_from_new(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    carry(destination, "vlans_enable", get(source, "vlans_enable"));
    int failures = cross(ways::names_to_old, source, "avail_ports", destination, "avail_ports", report);
    json_t* const instances = get(source, "vlans");
    if (instances == nullptr) return failures;
    Json vlans = array();
    const EveryNumber numbers{instances, report};
    failures += numbers.failures();
    for (const auto [number, instance] : numbers) failures += vlan_to_old(number - 1, instance, vlans.get(), report);
    set(destination, "vlans", std::move(vlans));
    return failures;
}

int k_cnvrt_get_vlan_from_old(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    cross(ways::names_to_new, source, "avail_ports", destination, "avail_ports", report);
    // Without a list of VLANs the switch is not carried either.
    json_t* const vlans = get(source, "vlans");
    if (vlans == nullptr) return 0;
    carry(destination, "vlans_enable", get(source, "vlans_enable"));
    return vlans_to_new(vlans, destination, report);
}
