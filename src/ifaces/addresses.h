// addresses.h: the addresses of a service: plain old members against a numbered list of the new service.
//
//     old                             new
//     "ip": ..., "mask": ...          "ip":   {"1": {"ip": ..., "mask": ...}, "max_instance": 1}
//     "ipv6": ...                     "ipv6": {"1": {"ipv6": ...}, "max_instance": 1}
//     "alias_ipv6": ...               the second entry of "ipv6", by the fields below from new to old alone
#pragma once

#include "frame/field.h"
#include "frame/list.h"

namespace kcnvrt {

namespace ways {

// Into the list's first entry; the list is made by the first address that there is.
int address_to_new(json_t* destination, Key list_name, Key member, json_t* value);

template <Text Member>
int first_address_to_new(json_t* destination, Key key, json_t* value, const Report&) {
    return address_to_new(destination, key, Key{Member.view()}, value);
}

// Out of the list's first entry, whatever "max_instance" says.
template <Text Member>
int first_address_to_old(json_t* destination, Key key, json_t* list, const Report& report) {
    return carry(destination, key, kcnvrt::get(entry_at(list, 1), Key{Member.view()}), report);
}

// Out of entry `Number` of a list of IPv6 addresses whose "max_instance" is at least 1.
template <int Number>
int ipv6_to_old(json_t* destination, Key key, json_t* list, const Report& report) {
    if (!has_instances(list)) return 0;
    return carry(destination, key, kcnvrt::get(entry_at(list, Number), "ipv6"), report);
}

}  // namespace ways

inline constexpr Word<ways::first_address_to_new<"ip">, ways::first_address_to_old<"ip">> listed_ip;
inline constexpr Word<ways::first_address_to_new<"mask">, ways::first_address_to_old<"mask">> listed_mask;
inline constexpr Word<ways::first_address_to_new<"ipv6">, ways::ipv6_to_old<1>> listed_ipv6;
// The same, but towards the old layout alone.
inline constexpr Word<nullptr, ways::ipv6_to_old<1>> listed_ipv6_to_old;
inline constexpr Word<nullptr, ways::ipv6_to_old<2>> listed_alias_to_old;

}  // namespace kcnvrt
