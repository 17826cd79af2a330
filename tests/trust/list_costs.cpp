// What lists cost: each kind of list of the examples with a thousand entries and with ten thousand, converted once
// each. Under callgrind, told to count nothing at the start, every conversion leaves a file of counts named for its
// list; scripts/costs.sh makes tables of them.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <set>

#include "hostile.h"

namespace {

// What tells entries apart, in one layout or the other: different in each.
constexpr const char* kIdentities[] = {"name", "login", "ifname_l2", "ifname_l3", "ifname_tun", "id", "vid"};

Tree numbered(const json_t* identity, size_t number) {
    if (json_is_integer(identity)) return Tree{json_integer(static_cast<json_int_t>(number))};
    std::string text = json_string_value(identity);
    text.erase(text.find_last_not_of("0123456789") + 1);
    return Tree{json_string((text + std::to_string(number)).c_str())};
}

Tree numbered_entry(json_t* entry, size_t number) {
    Tree copy{json_deep_copy(entry)};
    for (const char* name : kIdentities) {
        const json_t* identity = json_object_get(copy.get(), name);
        if (json_is_string(identity) || json_is_integer(identity))
            json_object_set_new(copy.get(), name, numbered(identity, number).release());
    }
    // Counted from 0, and each has to be in its place.
    if (json_object_get(copy.get(), "pos") != nullptr)
        json_object_set_new(copy.get(), "pos", json_integer(static_cast<json_int_t>(number - 1)));
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

// Lists of the old layout that keep their entries under names.
bool is_keyed(const Part& part, const std::string& path) {
    if (part.direction == Direction::kToOld) return false;
    for (const char* keyed :
         {"/services", "/tunnels", "rip", "wan_pvid", "ports_config", "port_bandwidth", "list", "ifaces"})
        if (path.ends_with(keyed)) return true;
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

bool is_in(const json_t* tree, const json_t* value) {
    if (tree == value) return true;
    const char* name;
    json_t* member;
    json_object_foreach(const_cast<json_t*>(tree), name, member) {
        if (is_in(member, value)) return true;
    }
    for (size_t i = 0; i < json_array_size(tree); ++i)
        if (is_in(json_array_get(tree, i), value)) return true;
    return false;
}

// Counts the second time, when the allocator has sorted what the document before has left behind.
Tree convert_counted(Part& part, const std::string& name) {
    json_decref(convert(part.direction, part.document.get(), nullptr));
    CALLGRIND_START_INSTRUMENTATION;
    Tree result{convert(part.direction, part.document.get(), nullptr)};
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    return result;
}

Tree result_of_few(Part& part, const Place& place, const std::string& name) {
    const Tree list = list_of(place.value.get(), 1000);
    const Replacement replacement{place, list.get()};
    return Tree{json_deep_copy(convert_counted(part, name + " 1000").get())};
}

// What becomes of a list: the conversion of few entries is compared with that of many.
const char* treatment_of_many(Part& part, const Place& place, const std::string& name, const json_t* of_few) {
    const Tree list = list_of(place.value.get(), 10000);
    const Replacement replacement{place, list.get()};
    const Tree result = convert_counted(part, name + " 10000");
    if (result == nullptr) return "rejected";
    if (is_in(result.get(), list.get())) return "shared whole";
    return json_equal(result.get(), of_few) ? "left out" : "converted";
}

}  // namespace

int main() {
    std::set<std::string> visited;
    for_each_place(1, [&](Part& part, const Place& place) {
        const bool is_meant =
            is_list(place.value.get()) || (is_keyed(part, place.path) && first_entry(place.value.get()) != nullptr);
        const std::string name = (part.direction == Direction::kToOld ? "to old " : "to new ") + pattern_of(place.path);
        if (!is_meant || !visited.insert(name).second) return;
        const Tree of_few = result_of_few(part, place, name);
        std::printf("%s\t%s\n", name.c_str(), treatment_of_many(part, place, name, of_few.get()));
    });
    return 0;
}
