// The VLAN identifiers of the WAN ports: an object keyed by interface name against a numbered list.
#include "frame/list.h"
#include "k_cnvrt.h"

using namespace kcnvrt;

int k_cnvrt_get_wan_pvid_from_new(json_t* source, json_t* destination, k_err_t*) {
    for (const auto [name, instance] : members(source)) {
        if (!json_is_object(instance)) continue;
        if (json_t* const pvid = get(instance, "pvid")) set_named(destination, get(instance, "name"), share(pvid));
    }
    return 0;
}

int k_cnvrt_get_wan_pvid_from_old(json_t* source, json_t* destination, k_err_t*) {
    if (source == nullptr) return 0;
    ListBuilder instances{destination};
    for (const auto [name, pvid] : SortedMembers{source}) {
        Json instance = object();
        set(instance.get(), "name", string(name));
        carry(instance.get(), "pvid", pvid);
        instances.add(std::move(instance));
    }
    instances.finish();
    return 0;
}
