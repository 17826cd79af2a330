// The types of services, and how an interface's services are told apart by them.
#include "ifaces/service_groups.h"

#include "frame/list.h"
#include "ifaces/named_entries.h"
#include "ifaces/services.h"
#include "ifaces/type_table.h"

namespace kcnvrt {

namespace {

// Whether a new group is skipped when its "max_instance" says that it has no entries.
enum class Count : uint8_t { kTrusted, kIgnored };

struct Service {
    ServiceType row;
    Key type;  // the old "type", and the name of the new group
    ServiceToNew to_new;
    ServiceToOld to_old;
    Count max_instance;
};

using enum ServiceType;

// New groups become old services in this order.
// clang-format off
constexpr Service kServices[kServiceTypes] = {
    // row        type        old to new               new to old               its max_instance
    {kBridge,   "bridge",   bridge_service_to_new,   bridge_service_to_old,   Count::kTrusted},
    // This group alone has always been converted whatever its "max_instance" says.
    {kIpv6,     "ipv6",     ipv6_service_to_new,     ipv6_service_to_old,     Count::kIgnored},
    {kIp,       "ip",       ip_service_to_new,       ip_service_to_old,       Count::kTrusted},
    {kPpp,      "ppp",      ppp_service_to_new,      ppp_service_to_old,      Count::kTrusted},
    {kPppv6,    "pppv6",    pppv6_service_to_new,    pppv6_service_to_old,    Count::kTrusted},
    {kPppdual,  "pppdual",  pppv6_service_to_new,    pppdual_service_to_old,  Count::kTrusted},
};
// clang-format on
static_assert(has_each_type_once(kServices));

const Service* service_of_type(json_t* type) {
    for (const Service& service : kServices)
        if (is_text(type, service.type.view())) return &service;
    return nullptr;
}

int group_to_old(const Service& type, json_t* group, json_t* old_services, json_t* l2_iface, k_err_t* err) {
    if (type.max_instance == Count::kTrusted && !has_instances(group)) return 0;
    return entries_to_old(group, "ifname_l3", type.type, old_services, [&](json_t* entry, json_t* old_service) {
        return type.to_old(entry, old_service, l2_iface, err);
    });
}

}  // namespace

int services_to_new(json_t* old_iface, json_t* new_iface, const GroupOrder& order, k_err_t* err) {
    json_t* const old_services = get(old_iface, "services");
    if (old_services == nullptr) return 0;

    int failures = 0;
    ListBuilder groups[kServiceTypes];
    for (const auto [name, old_service] : SortedMembers{old_services}) {
        const Service* const type = service_of_type(get(old_service, "type"));
        if (type == nullptr) continue;
        Json entry = named_entry("ifname_l3", name);
        failures += type->to_new(old_service, entry.get(), err);
        groups[type - kServices].add(std::move(entry));
    }

    Json new_services = object();
    for (const ServiceType type : order) {
        const auto at = static_cast<size_t>(type);
        if (groups[at].count() > 0) set(new_services.get(), kServices[at].type, groups[at].finish());
    }
    set(new_iface, "services", std::move(new_services));
    return failures;
}

int services_to_old(json_t* new_iface, json_t* old_iface, k_err_t* err) {
    json_t* const new_services = get(new_iface, "services");
    json_t* const l2_iface = get(new_iface, "ifname_l2");

    int failures = 0;
    Json old_services = object();
    for (const Service& type : kServices)
        failures += group_to_old(type, get(new_services, type.type), old_services.get(), l2_iface, err);
    set(old_iface, "services", std::move(old_services));
    return failures;
}

}  // namespace kcnvrt
