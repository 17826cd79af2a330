// The losses that bring places together, one function each, found by their names in losses.json.
#include "joint_losses.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "value_at.h"

namespace {

bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

std::vector<std::string> names_of(json_t* object) {
    std::vector<std::string> names;
    const char* name;
    json_t* value;
    json_object_foreach(object, name, value) names.push_back(name);
    return names;
}

// An interface of the old layout takes its connection type from its services: from the first in the order of names that
// has one, of the first type that has any.
json_t* contype_of(json_t* services) {
    for (const char* type : {"ip", "ppp", "ipv6", "pppv6"}) {
        std::map<std::string, json_t*> contypes;
        const char* name;
        json_t* service;
        json_object_foreach(services, name, service) {
            json_t* contype = json_object_get(service, "contype");
            const char* own_type = json_string_value(json_object_get(service, "type"));
            if (contype != nullptr && std::strcmp(own_type, type) == 0) contypes[name] = contype;
        }
        if (!contypes.empty()) return contypes.begin()->second;
    }
    return nullptr;
}

size_t derive_contype(const Row& row, json_t* document) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* iface) {
        if (!row.matches(at)) return;
        json_t* contype = contype_of(json_object_get(iface, "services"));
        if (json_equal(contype, json_object_get(iface, "contype"))) return;
        ++seen;
        json_object_del(iface, "contype");
        json_object_set(iface, "contype", contype);
    });
    return seen;
}

// Entries of two lists under the same number are one thing in the other layout: each of these members gets the value
// that the second list's entry has, or else the first's. "names" may lie deeper, separated by "/".
size_t join_twins(const Row& row, json_t* document) {
    size_t seen = 0;
    const auto holder = [](json_t* entry, std::string name) {
        for (size_t end; (end = name.find('/')) != name.npos; name.erase(0, end + 1))
            entry = json_object_get(entry, name.substr(0, end).c_str());
        return std::pair{entry, name};
    };
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        if (!row.matches(at)) return;
        json_t* firsts = json_object_get(object, json_string_value(row["first"]));
        json_t* seconds = json_object_get(object, json_string_value(row["second"]));
        const char* number;
        json_t* first;
        json_object_foreach(firsts, number, first) {
            json_t* second = json_object_get(seconds, number);
            for (size_t i = 0; i < json_array_size(row["names"]); ++i) {
                const auto [in_first, name] = holder(first, json_string_value(json_array_get(row["names"], i)));
                const auto [in_second, same] = holder(second, json_string_value(json_array_get(row["names"], i)));
                json_t* of_first = json_object_get(in_first, name.c_str());
                json_t* of_second = json_object_get(in_second, name.c_str());
                const bool is_first_asked = row.says("first wins");
                json_t* winner = is_first_asked ? of_first : of_second != nullptr ? of_second : of_first;
                if (json_equal(winner, of_first) && json_equal(winner, of_second)) continue;
                if (in_first == nullptr || in_second == nullptr || (winner == nullptr && of_second == nullptr))
                    continue;
                ++seen;
                const Tree kept{json_incref(winner)};
                json_object_set(in_first, name.c_str(), kept.get());
                if (kept == nullptr)
                    json_object_del(in_second, name.c_str());
                else
                    json_object_set(in_second, name.c_str(), kept.get());
            }
        }
    });
    return seen;
}

// The reserved hosts of a bridge's DHCP server: one list in the old layout, whose hosts are those of the IPv4 family.
// Each gets its IPv6 address from the host of the same number.
size_t join_hosts(const Row& row, json_t* document) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* services) {
        if (!row.matches(at)) return;
        const char* number;
        json_t* ip_entry;
        json_object_foreach(json_object_get(services, "ip"), number, ip_entry) {
            json_t* ipv6_entry = json_object_get(json_object_get(services, "ipv6"), number);
            json_t* hosts = json_object_get(json_object_get(ip_entry, "dhcpd"), "reserved");
            json_t* ipv6_dhcpd = json_object_get(ipv6_entry, "dhcpd");
            const Tree former{json_incref(json_object_get(ipv6_dhcpd, "reserved"))};
            if (hosts == nullptr) continue;
            Tree joined{json_deep_copy(hosts)};
            const char* name;
            json_t* host;
            json_object_foreach(joined.get(), name, host) {
                json_object_del(host, "ip");
                json_object_set(host, "ipv6", json_object_get(json_object_get(former.get(), name), "ipv6"));
            }
            seen += json_equal(joined.get(), former.get()) == 0;
            json_object_set(ipv6_dhcpd, "reserved", joined.get());
        }
    });
    return seen;
}

// The objects at the end of a path of names below an object, "*" being every member that is an object.
void collect(json_t* object, const std::string& path, std::vector<json_t*>& found) {
    if (path.empty()) {
        found.push_back(object);
        return;
    }
    const size_t end = std::min(path.find('/'), path.size());
    const std::string rest = end == path.size() ? "" : path.substr(end + 1);
    const char* name;
    json_t* member;
    json_object_foreach(object, name, member) {
        if (json_is_object(member) && (path.substr(0, end) == "*" || path.substr(0, end) == name))
            collect(member, rest, found);
    }
}

// Entries that share one value in the other layout all get it: that of the last one that has any, or of the first
// entry, also when that has none.
size_t share_values(const Row& row, json_t* document) {
    size_t seen = 0;
    const std::string in = row.says("in") ? json_string_value(row["in"]) : "";
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        if (!row.matches(at)) return;
        std::vector<json_t*> entries;
        collect(object, json_string_value(row["entries"]), entries);
        for (size_t i = 0; i < json_array_size(row["names"]); ++i) {
            const char* name = json_string_value(json_array_get(row["names"], i));
            Tree shared;
            for (json_t* entry : entries) {
                json_t* value = json_object_get(value_at(entry, in), name);
                if (value != nullptr) shared = Tree{json_incref(value)};
                if (row.says("first wins")) break;
            }
            for (json_t* entry : entries) {
                json_t* value = json_object_get(value_at(entry, in), name);
                if (json_equal(value, shared.get()) || (value == nullptr && shared == nullptr)) continue;
                ++seen;
                if (shared == nullptr)
                    json_object_del(value_at(entry, in), name);
                else
                    json_object_set(object_at(entry, in), name, shared.get());
            }
        }
    });
    return seen;
}

// Of two lists that share their numbers in the other layout, the second loses those that the first has. Its
// "max_instance" is then the highest that it keeps.
size_t drop_taken_numbers(const Row& row, json_t* document) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        if (!row.matches(at)) return;
        json_t* first = value_at(object, json_string_value(row["first"]));
        json_t* second = value_at(object, json_string_value(row["second"]));
        long highest = 0;
        for (const std::string& name : names_of(second)) {
            if (!is_number(name)) continue;
            if (json_object_get(first, name.c_str()) == nullptr)
                highest = std::max(highest, std::stol(name));
            else
                seen += json_object_del(second, name.c_str()) == 0;
        }
        if (second != nullptr) json_object_set_new(second, "max_instance", json_integer(highest));
    });
    return seen;
}

// A member that is written in one place and read back from another, which may be absent.
size_t read_elsewhere(const Row& row, json_t* document) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        for (const std::string& name : row.names_in(at)) {
            if (!json_is_object(object)) continue;
            const Tree read{json_incref(value_at(document, json_string_value(row["from"])))};
            json_t* there = json_object_get(object, name.c_str());
            seen += there != nullptr && json_equal(there, read.get()) == 0;
            json_object_del(object, name.c_str());
            json_object_set(object, name.c_str(), read.get());
        }
    });
    return seen;
}

}  // namespace

JointLoss joint_loss(const std::string& name) {
    static const std::map<std::string, JointLoss> losses = {
        {"derived contype", derive_contype}, {"joined", join_twins},         {"number taken", drop_taken_numbers},
        {"read elsewhere", read_elsewhere},  {"reserved hosts", join_hosts}, {"shared", share_values},
    };
    const auto loss = losses.find(name);
    return loss == losses.end() ? nullptr : loss->second;
}
