// Port settings and port bandwidth: two sections of one shape, whose members nobody looks into.
#include "frame/list.h"
#include "frame/report.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

namespace {

Json without_name(json_t* instance) {
    Json port = object();
    for (const auto [name, value] : members(instance))
        if (name != "name") carry(port.get(), name, value);
    return port;
}

// The instances by their port's name, which is then no longer a member.
int ports_to_old(json_t* source, json_t* destination) {
    for (const auto [number, instance] : Instances{source})
        set_named(destination, get(instance, "name"), without_name(instance));
    return 0;
}

// A value that is not an object has no place for the name and stays as it is.
Json named_port(Key name, json_t* port) {
    Json instance = shallow_copy(port);
    set(instance.get(), "name", string(name));
    return instance;
}

int ports_to_new(json_t* source, json_t* destination, const Report& report) {
    if (source == nullptr) return 0;
    const SortedMembers ports{source};
    if (ports.failed()) return report.fail("Error allocated memory!\n");
    ListBuilder list{destination};
    for (const auto& [name, port] : ports) list.add(named_port(name, port));
    list.finish();
    return 0;
}

}  // namespace

int k_cnvrt_get_port_settings_from_new(json_t* source, json_t* destination, k_err_t*) {
    return ports_to_old(source, destination);
}

int k_cnvrt_get_port_settings_from_old(json_t* source, json_t* destination, k_err_t* err) {
    return ports_to_new(source, destination, Report{__func__, err});
}

int k_cnvrt_get_port_bandwidth_from_new(json_t* source, json_t* destination, k_err_t*) {
    return ports_to_old(source, destination);
}

int k_cnvrt_get_port_bandwidth_from_old(json_t* source, json_t* destination, k_err_t* err) {
    return ports_to_new(source, destination, Report{__func__, err});
}
