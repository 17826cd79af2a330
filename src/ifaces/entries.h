// entries.h: objects keyed by interface name in the old layout, against entries that carry the name in the new one.
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
// converted, so that its problems are told, but not stored; of two with the same name the later one stays.
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

// The old services of one type as a numbered list, in ascending byte order of their names; others are dropped. Each
// entry is filled by `convert(old_service, entry)`, whose count of failed fields is added to `failures`.
template <class Convert>
Json services_of_type(json_t* old_services, std::string_view type, int& failures, Convert convert) {
    ListBuilder services;
    for (const auto [name, old_service] : SortedMembers{old_services}) {
        if (!is_text(get(old_service, "type"), type)) continue;
        Json entry = named_entry("ifname_l3", name);
        failures += convert(old_service, entry.get());
        services.add(std::move(entry));
    }
    return services.finish();
}

}  // namespace kcnvrt
