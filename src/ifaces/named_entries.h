// named_entries.h: members of an old object, keyed by an interface's name, against new entries that carry the name.
#pragma once

#include "frame/json.h"
#include "frame/list.h"

namespace kcnvrt {

// A new entry that starts with its name in the old layout: under "ifname_l2", "ifname_l3" or "ifname_tun".
inline Json named_entry(Key name_key, Key name) {
    Json entry = object();
    set(entry.get(), name_key, string(name));
    return entry;
}

// The entries of a new list, in the list's own order, as members of an old object, each filled by
// `convert(entry, old_member)`, which returns its count of failed fields. An entry whose name is not a string is
// converted, so that its problems are reported, but not stored; of two with the same name the later one stays.
template <class Convert>
int entries_to_old(json_t* list, Key name_key, json_t* old_object, Convert convert) {
    int failures = 0;
    for (const auto [number, entry] : members(list)) {
        if (!json_is_object(entry)) continue;
        Json old_member = object();
        failures += convert(entry, old_member.get());
        set_named(old_object, get(entry, name_key), std::move(old_member));
    }
    return failures;
}

// The same for a group of interfaces or services, whose old members say the group's type.
template <class Convert>
int entries_to_old(json_t* group, Key name_key, Key type, json_t* old_object, Convert convert) {
    return entries_to_old(group, name_key, old_object, [&](json_t* entry, json_t* old_member) {
        set(old_member, "type", string(type));
        return convert(entry, old_member);
    });
}

// "services" of a new interface that has one group of them only. Unlike the groups of wired interfaces it is written
// even when it is empty.
inline void set_only_group(json_t* new_iface, Key type, Json group) {
    Json new_services = object();
    set(new_services.get(), type, std::move(group));
    set(new_iface, "services", std::move(new_services));
}

// The services of an interface that has services of one type only: the old ones of that type in ascending byte order of
// their names, others dropped, each filled by `convert(old_service, entry)`; and back by `convert(entry, old_service)`.
// Nothing is written where the interface has no "services".
template <class Convert>
int only_group_to_new(json_t* old_iface, Key type, json_t* new_iface, Convert convert) {
    json_t* const old_services = get(old_iface, "services");
    if (old_services == nullptr) return 0;
    int failures = 0;
    ListBuilder group;
    for (const auto [name, old_service] : SortedMembers{old_services}) {
        if (!is_text(get(old_service, "type"), type.view())) continue;
        Json entry = named_entry("ifname_l3", name);
        failures += convert(old_service, entry.get());
        group.add(std::move(entry));
    }
    set_only_group(new_iface, type, group.finish());
    return failures;
}
template <class Convert>
int only_group_to_old(json_t* new_iface, Key type, json_t* old_iface, Convert convert) {
    json_t* const new_services = get(new_iface, "services");
    if (new_services == nullptr) return 0;
    Json old_services = object();
    const int failures = entries_to_old(get(new_services, type), "ifname_l3", type, old_services.get(), convert);
    set(old_iface, "services", std::move(old_services));
    return failures;
}

}  // namespace kcnvrt
