// "Services": one object of all network services in the new layout, a section of its own for each in the old one.
#include "k_cnvrt/services.h"
#include "frame/report.h"
#include "k_cnvrt.h"
#include "services/service_list.h"

using namespace kcnvrt;
using namespace kcnvrt::service_list;

namespace {

bool has_section_of(json_t* old_root, Key group) {
    for (const Service& service : kServices)
        if (service.group == group && has(old_root, service.old_name)) return true;
    return false;
}

// A group is made when any of its sections is there, and then all its converters run: DNS has {} for an absent section.
// What they count is left out: a failed name server or tunnel never rejects a configuration on its way to the new
// layout; on the way back it does.
void group_to_new(json_t* old_root, Key group, json_t* services, k_err_t* err) {
    if (!has_section_of(old_root, group)) return;
    Json made = object();
    for (const Service& service : kServices) {
        if (service.group != group) continue;
        json_t* const section = get(old_root, service.old_name);
        uncounted(err, [&] {
            if (service.converts_group)
                service.to_new(section, made.get(), err);
            else
                json_services_parser(section, service.new_name.text(), made.get(), service.to_new, 0, err);
        });
    }
    set(services, group, std::move(made));
}

// One service towards the old layout, where it has the section.
int service_to_old(const Service& service, json_t* services, json_t* old_root, const Report& report) {
    json_t* const home = service.group == kAlone ? services : get(services, service.group);
    json_t* const section = get(home, service.new_name);
    json_t* const source = section != nullptr && service.converts_group ? home : section;
    const int failures = json_services_parser(source, service.old_name.text(), old_root, service.to_old,
                                              service.old_container == kArray, report.err());
    return report.placed(failures, home, service.new_name);
}

int service_to_new(const Service& service, json_t* old_root, json_t* services, const Report& report) {
    const int failures = json_services_parser(get(old_root, service.old_name), service.new_name.text(), services,
                                              service.to_new, 0, report.err());
    return report.placed(failures, old_root, service.old_name);
}

}  // namespace

int k_cnvrt_get_services_from_old(json_t* old_root, json_t* services, k_err_t* err) {
    for (const Service& service : kServices)
        if (service.conversion == Conversion::kNone) carry(services, service.new_name, get(old_root, service.old_name));

    for (const Key group : {kDns, kVpn}) group_to_new(old_root, group, services, err);

    const Report report{__func__, err};
    int failures = 0;
    for (const Service& service : kServices)
        if (service.conversion != Conversion::kNone && service.group == kAlone)
            failures += service_to_new(service, old_root, services, report);
    return failures;
}

int k_cnvrt_get_services_from_new(json_t* services, json_t* old_root, k_err_t* err) {
    for (const Service& service : kServices)
        if (service.conversion != Conversion::kBothWays)
            carry(old_root, service.old_name, get(services, service.new_name));

    const Report report{__func__, err};
    int failures = 0;
    for (const Service& service : kServices)
        if (service.conversion == Conversion::kBothWays)
            failures += service_to_old(service, services, old_root, report);
    return failures;
}
