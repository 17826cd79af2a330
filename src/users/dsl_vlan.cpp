// VLANs of devices with a DSL uplink. The old layout has no list of them but interface groups, with the VLAN of a port
// kept on the services of the port's name.
#include "frame/list.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

// A bridge: the "type" of a group, and the "dest" of its VLANs.
constexpr char kBridgedType[] = "L2";
constexpr char kBridgedDest[] = "bridge";

// Stands for no VLAN, and is not written on a service.
constexpr json_int_t kNoVlan = 1;

// Towards the old layout.

void set_type(json_t* group, bool is_bridged) {
    set(group, "type", is_bridged ? string(kBridgedType) : string("L3"));
    set(group, "nat", boolean(!is_bridged));
}

// The group of that interface, made where there is none yet.
json_t* group_of(json_t* groups, Key iface, json_t* vlan) {
    if (json_t* const group = get(groups, iface)) return group;
    Json group = object();
    carry(group.get(), "name", get(vlan, "name"));
    set(group.get(), "wans", array());
    set(group.get(), "lans", array());
    set(groups, iface, std::move(group));
    return get(groups, iface);
}

// The ports of a VLAN into its group, and what their services will get: of several VLANs of a port, the last holds.
void ports_to_group(json_t* vlan, json_t* group, json_t* vlan_of_port) {
    json_t* const wans = get(group, "wans");
    json_t* const lans = get(group, "lans");
    const bool is_on_services = json_integer_value(get(vlan, "vid")) > kNoVlan;
    for (const auto [number, port] : Instances{get(vlan, "ports")}) {
        json_t* const name = get(port, "name");
        if (is_on_services) set_named(vlan_of_port, name, share(vlan));
        append_shared(json_is_true(get(port, "tag")) ? wans : lans, name);
    }
}

Json groups_of(json_t* vlans, json_t* vlan_of_port) {
    Json groups = object();
    for (const auto [number, vlan] : Instances{vlans}) {
        json_t* const iface = get(vlan, "ifname");
        if (!json_is_string(iface)) continue;
        json_t* const group = group_of(groups.get(), name_of(iface), vlan);
        if (is_text(get(vlan, "dest"), kBridgedDest)) set_type(group, true);
        ports_to_group(vlan, group, vlan_of_port);
    }
    for (const auto [iface, group] : members(groups.get()))
        if (!has(group, "type")) set_type(group, is_empty(get(group, "wans")) && !is_empty(get(group, "lans")));
    return groups;
}

// Every service of a port's name, in one walk over all interfaces: a walk for each port would cost their product.
void vlans_to_services(json_t* vlan_of_port, json_t* ifaces) {
    for (const auto [iface_name, iface] : members(ifaces))
        for (const auto [name, service] : members(get(iface, "services"))) {
            json_t* const vlan = get(vlan_of_port, name);
            if (vlan == nullptr) continue;
            Json setting = object();
            carry(setting.get(), "vlanpr", get(vlan, "vlanprio"));
            carry(setting.get(), "vlanid", get(vlan, "vid"));
            set(service, "vlan", std::move(setting));
        }
}

// Towards the new layout.

// What the services of each name say of its VLAN, as the "vlan" of a single service. With several of a name, each value
// that is there replaces the one before.
Json settings_by_service(json_t* ifaces) {
    Json by_name = object();
    for (const auto [iface_name, iface] : members(ifaces))
        for (const auto [name, service] : members(get(iface, "services"))) {
            json_t* const vlan = get(service, "vlan");
            if (vlan == nullptr) continue;
            if (!has(by_name.get(), name)) set(by_name.get(), name, object());
            json_t* const setting = get(by_name.get(), name);
            carry(setting, "vlanid", get(vlan, "vlanid"));
            carry(setting, "vlanpr", get(vlan, "vlanpr"));
        }
    return by_name;
}

json_int_t integer_or(json_t* value, json_int_t if_absent) {
    return value == nullptr ? if_absent : json_integer_value(value);
}

void add_port(json_t* vlan, json_t* port, bool is_tagged) {
    Json entry = object();
    carry(entry.get(), "name", port);
    set(entry.get(), "tag", boolean(is_tagged));

    json_t* const ports = get(vlan, "ports");
    const auto number = static_cast<uint32_t>(json_integer_value(get(ports, "max_instance"))) + 1;
    set(ports, Decimal{number}, std::move(entry));
    set_max_instance(ports, number);
}

// The VLANs of one direction of a group, one for each identifier, and found by it in an object of their own.
class VlansOfGroup {
public:
    VlansOfGroup(Key iface, json_t* group, Key dest) : iface_{iface}, group_{group}, dest_{dest}, by_vid_{object()} {}

    json_t* find_or_add(json_int_t vid, ListBuilder& vlans) {
        const Decimal name{vid};
        if (json_t* const vlan = get(by_vid_.get(), name)) return vlan;
        Json vlan = object();
        carry(vlan.get(), "name", get(group_, "name"));
        set(vlan.get(), "dest", string(dest_));
        set(vlan.get(), "vid", integer(vid));
        set(vlan.get(), "ifname", string(iface_));
        Json ports = object();
        set_max_instance(ports.get(), 0);
        set(vlan.get(), "ports", std::move(ports));
        vlans.add(share(vlan.get()));
        set(by_vid_.get(), name, std::move(vlan));
        return get(by_vid_.get(), name);
    }

private:
    Key iface_;
    json_t* group_;
    Key dest_;
    Json by_vid_;
};

struct Tables {
    json_t* settings;
    ListBuilder vlans;
    ListBuilder avail_ports;
};

void place_ports(json_t* ports, bool is_tagged, VlansOfGroup& group, Tables& tables) {
    for (const auto [number, port] : elements(ports)) {
        Json available = object();
        carry(available.get(), "name", port);
        tables.avail_ports.add(std::move(available));

        json_t* const setting = get(tables.settings, name_of(port));
        json_t* const vlan = group.find_or_add(integer_or(get(setting, "vlanid"), kNoVlan), tables.vlans);
        add_port(vlan, port, is_tagged);
        // The port that comes last has the VLAN's priority.
        set(vlan, "vlanprio", integer(integer_or(get(setting, "vlanpr"), 0)));
    }
}

void place_group(Key iface, json_t* group, Tables& tables) {
    json_t* const wans = get(group, "wans");
    json_t* const lans = get(group, "lans");
    if (json_array_size(wans) != 0 && json_array_size(lans) != 0 && is_text(get(group, "type"), kBridgedType)) {
        VlansOfGroup bridge{iface, group, kBridgedDest};
        place_ports(lans, false, bridge, tables);
        place_ports(wans, true, bridge, tables);
        return;
    }
    VlansOfGroup lan{iface, group, "lan"};
    place_ports(lans, false, lan, tables);
    VlansOfGroup wan{iface, group, "wan"};
    place_ports(wans, true, wan, tables);
}

}  // namespace

int k_cnvrt_get_vlan_dsl_from_new(json_t* source, json_t* destination, k_err_t*) {
    json_t* const vlans = get(source, "vlans");
    if (vlans == nullptr) return 0;
    const Json vlan_of_port = object();
    Json groups = groups_of(vlans, vlan_of_port.get());
    vlans_to_services(vlan_of_port.get(), get(destination, "ifaces"));
    // On its own the section is the groups themselves.
    if (is_empty(destination)) {
        carry_members(destination, groups.get());
        return 0;
    }
    set(destination, "group_index", integer(static_cast<int64_t>(json_object_size(groups.get()))));
    set(destination, "groups", std::move(groups));
    return 0;
}

int k_cnvrt_get_vlan_dsl_from_old(json_t* source, json_t* destination, k_err_t*) {
    json_t* const groups = get(source, "groups");
    if (json_object_size(groups) == 0) return 0;
    const Json settings = settings_by_service(get(source, "ifaces"));
    Tables tables{settings.get(), {}, {}};
    for (const auto& [iface, group] : SortedMembers{groups}) place_group(iface, group, tables);
    set(destination, "avail_ports", tables.avail_ports.finish());
    set(destination, "vlans", tables.vlans.finish());
    return 0;
}
