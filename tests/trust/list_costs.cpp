// What lists cost: each kind of list of the examples with a thousand entries and with ten thousand, converted once each.
// Under callgrind, told to count inside counted() alone, every conversion leaves a file of counts named for its list;
// scripts/costs.sh makes a table of them.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <set>

#include "hostile.h"

namespace {

// Names by which the other layout keys entries: different for each.
constexpr const char* kNames[] = {"name", "login", "ifname_l2", "ifname_l3", "ifname_tun"};

Tree numbered_entry(json_t* entry, size_t number) {
    Tree copy{json_deep_copy(entry)};
    for (const char* name : kNames)
        if (json_is_string(json_object_get(copy.get(), name)))
            json_object_set_new(copy.get(), name, json_sprintf("entry%zu", number));
    return copy;
}

json_t* first_entry(json_t* list) {
    if (json_is_array(list)) return json_array_get(list, 0);
    const char* name;
    json_t* entry;
    json_object_foreach(list, name, entry) {
        if (json_is_object(entry)) return entry;
    }
    return nullptr;
}

// A numbered list, an array, or an object of objects under names of their own.
bool is_list(const json_t* value) {
    json_t* list = const_cast<json_t*>(value);
    return first_entry(list) != nullptr && (json_is_array(list) || json_object_get(list, "max_instance") != nullptr);
}

bool is_keyed(const std::string& path) {
    for (const char* keyed : {"services", "tunnels", "rip", "wan_pvid", "ports_config", "port_bandwidth", "list", "ifaces"})
        if (path.size() >= std::string{keyed}.size() && path.ends_with(keyed)) return true;
    return false;
}

Tree list_of(json_t* list, size_t entries) {
    json_t* first = first_entry(list);
    Tree made{json_is_array(list) ? json_array() : json_object()};
    for (size_t number = 1; number <= entries; ++number) {
        if (json_is_array(list))
            json_array_append_new(made.get(), numbered_entry(first, number).release());
        else
            json_object_set_new(made.get(), std::to_string(number).c_str(), numbered_entry(first, number).release());
    }
    if (json_object_get(list, "max_instance") != nullptr)
        json_object_set_new(made.get(), "max_instance", json_integer(static_cast<json_int_t>(entries)));
    return made;
}

[[gnu::noinline]] json_t* counted(Part& part) {
    return convert(part.direction, part.document.get(), nullptr);
}

// The second time, when the allocator has sorted what the document before has left behind.
void convert_counted(Part& part, const std::string& name) {
    json_decref(convert(part.direction, part.document.get(), nullptr));
    json_decref(counted(part));
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

}  // namespace

int main() {
    std::set<std::string> visited;
    for_each_place(1, [&](Part& part, const Place& place) {
        const bool is_meant = is_list(place.value.get()) ||
                              (is_keyed(place.path) && first_entry(place.value.get()) != nullptr);
        const std::string name = (part.direction == Direction::kToOld ? "to old " : "to new ") + pattern_of(place.path);
        if (!is_meant || !visited.insert(name).second) return;
        for (const size_t entries : {1000, 10000}) {
            const Tree list = list_of(place.value.get(), entries);
            const Replacement replacement{place, list.get()};
            convert_counted(part, name + " " + std::to_string(entries));
        }
    });
    return 0;
}
