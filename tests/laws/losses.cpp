#include "losses.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace {

// A member or element out of its container.
void remove(json_t* container, const Step& step) {
    if (json_is_object(container)) {
        json_object_del(container, step.name.c_str());
        return;
    }
    for (size_t i = 0; i < json_array_size(container); ++i)
        if (json_array_get(container, i) == step.value) json_array_remove(container, i);
}

void put(json_t* container, const Step& step, Tree value) {
    if (json_is_object(container)) {
        json_object_set_new(container, step.name.c_str(), value.release());
        return;
    }
    for (size_t i = 0; i < json_array_size(container); ++i)
        if (json_array_get(container, i) == step.value) json_array_set_new(container, i, value.release());
}

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

bool is_in(json_t* values, json_t* value) {
    for (size_t i = 0; i < json_array_size(values); ++i)
        if (json_equal(json_array_get(values, i), value)) return true;
    return false;
}

bool has_entries(json_t* container) {
    json_t* count = json_object_get(container, "max_instance");
    return json_array_size(container) + json_object_size(container) > (count == nullptr ? 0u : 1u);
}

template <class Holds>
bool any_of(json_t* list, const Holds& holds) {
    for (size_t i = 0; i < json_array_size(list); ++i)
        if (holds(json_array_get(list, i))) return true;
    return false;
}

// The conditions of a row, on the object that the place is in.
//   "has"                names that are all there         "lacks"       names that are all absent
//   "lacks one group"    groups of names, of which one is wholly absent
//   "lacks entries"      names of lists that are all empty or absent
//   "is", "is not"       members that all have, or of which one has not, that value
bool holds(json_t* conditions, json_t* object) {
    const auto is_there = [object](json_t* name) {
        return json_object_get(object, json_string_value(name)) != nullptr;
    };
    const auto is_absent = [&](json_t* name) { return !is_there(name); };
    if (any_of(json_object_get(conditions, "has"), is_absent)) return false;
    if (any_of(json_object_get(conditions, "lacks"), is_there)) return false;
    json_t* groups = json_object_get(conditions, "lacks one group");
    if (groups != nullptr && !any_of(groups, [&](json_t* group) { return !any_of(group, is_there); })) return false;
    const auto is_filled = [object](json_t* name) {
        return has_entries(json_object_get(object, json_string_value(name)));
    };
    if (any_of(json_object_get(conditions, "lacks entries"), is_filled)) return false;
    const auto equals = [object](const char* name, json_t* value) {
        return json_equal(json_object_get(object, name), value);
    };
    const char* name;
    json_t* value;
    json_object_foreach(json_object_get(conditions, "is"), name, value) {
        if (!equals(name, value)) return false;
    }
    json_object_foreach(json_object_get(conditions, "is not"), name, value) {
        if (equals(name, value)) return false;
    }
    return true;
}

// The first seven characters of a number.
Tree cut(json_t* value) {
    const std::string text =
        json_is_string(value) ? json_string_value(value) : std::to_string(json_integer_value(value));
    const std::string kept = text.substr(0, 7);
    return Tree{json_is_string(value) ? json_string(kept.c_str()) : json_integer(std::stoll(kept))};
}

Tree as_integer(json_t* value) {
    return Tree{json_is_string(value) ? json_integer(std::stoll(json_string_value(value))) : json_incref(value)};
}

// What comes back in place of a value; null where nothing does.
Tree what_comes_of(const Row& row, json_t* value) {
    const std::string loss = json_string_value(row["loss"]);
    if (loss == "dropped") return nullptr;
    if (loss == "cut") return cut(value);
    if (loss == "becomes an integer") return as_integer(value);
    if (loss == "becomes") return Tree{json_deep_copy(row["value"])};
    return Tree{json_incref(value)};
}

// Rows on values that are there.
size_t change_values(const Row& row, json_t* document) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* value) {
        if (at.empty() || !row.matches(at)) return;
        if (row.says("when") && !is_in(row["when"], value)) return;
        json_t* container = at.size() == 1 ? document : at[at.size() - 2].value;
        if (!holds(row["where"], container)) return;
        Tree changed = what_comes_of(row, value);
        if (changed != nullptr && json_equal(changed.get(), value)) return;
        ++seen;
        if (changed == nullptr)
            remove(container, at.back());
        else
            put(container, at.back(), std::move(changed));
    });
    return seen;
}

// A bare list of addresses as a list of stations.
Tree stations_of(json_t* addresses) {
    if (addresses == nullptr) return nullptr;
    Tree stations{json_object()};
    for (size_t i = 0; i < json_array_size(addresses); ++i)
        json_object_set_new(
            stations.get(), std::to_string(i + 1).c_str(),
            json_pack("{s:O, s:s, s:b}", "mac", json_array_get(addresses, i), "hostname", "", "active", 0));
    json_object_set_new(stations.get(), "max_instance",
                        json_integer(static_cast<json_int_t>(json_array_size(addresses))));
    return stations;
}

// What a member that comes in addition holds: a value, the number of the entry that it is in, the name of something above it, or what another member holds.
Tree added_value(const Row& row, const Path& object_path, json_t* object) {
    if (json_t* levels = row["name above"]) {
        const size_t up = static_cast<size_t>(json_integer_value(levels));
        return Tree{json_string(object_path[object_path.size() - up].name.c_str())};
    }
    if (json_t* first = row["value number"]) {
        return Tree{json_integer(std::stoll(object_path.back().name) + json_integer_value(first))};
    }
    if (json_t* levels = row["value above"]) {
        const size_t up = static_cast<size_t>(json_integer_value(levels));
        json_t* above = object_path[object_path.size() - up].value;
        return Tree{json_incref(json_object_get(above, row.places.front().last_names().front().c_str()))};
    }
    if (json_t* counted = row["count of"]) {
        const size_t size = json_object_size(json_object_get(object, json_string_value(counted)));
        const size_t less = row.says("less") ? static_cast<size_t>(json_integer_value(row["less"])) : 1;
        return Tree{json_integer(static_cast<json_int_t>(size > less ? size - less : 0))};
    }
    if (json_t* addresses = row["stations of"])
        return stations_of(json_object_get(object, json_string_value(addresses)));
    if (json_t* member = row["value of"])
        return Tree{json_deep_copy(json_object_get(object, json_string_value(member)))};
    return Tree{json_deep_copy(row["value"])};
}

// Rows on members that come in addition, "added" over what is there and "default" where nothing is.
size_t add_members(const Row& row, json_t* document) {
    const bool is_default = std::strcmp(json_string_value(row["loss"]), "default") == 0;
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        if (!json_is_object(object) || !holds(row["where"], object)) return;
        for (const Pattern& place : row.places) {
            if (!place.parent().matches(at)) continue;
            for (const std::string& each : place.last_names()) {
                const char* name = each.c_str();
                if (is_default && json_object_get(object, name) != nullptr) continue;
                Tree value = added_value(row, at, object);
                if (value == nullptr || json_equal(json_object_get(object, name), value.get())) continue;
                ++seen;
                json_object_set_new(object, name, value.release());
            }
        }
    });
    return seen;
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

json_t* inner_object(json_t* object, const std::string& path, bool is_made) {
    if (path.empty()) return object;
    const size_t end = std::min(path.find('/'), path.size());
    const std::string name = path.substr(0, end);
    if (json_object_get(object, name.c_str()) == nullptr && is_made)
        json_object_set_new(object, name.c_str(), json_object());
    json_t* inner = json_object_get(object, name.c_str());
    return end == path.size() ? inner : inner_object(inner, path.substr(end + 1), is_made);
}

// Entries that share one value in the other layout all get it: that of the last one that has any, or of the first entry,
// also when that has none.
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
                json_t* value = json_object_get(inner_object(entry, in, false), name);
                if (value != nullptr) shared = Tree{json_incref(value)};
                if (row.says("first wins")) break;
            }
            for (json_t* entry : entries) {
                json_t* value = json_object_get(inner_object(entry, in, false), name);
                if (json_equal(value, shared.get()) || (value == nullptr && shared == nullptr)) continue;
                ++seen;
                if (shared == nullptr)
                    json_object_del(inner_object(entry, in, false), name);
                else
                    json_object_set(inner_object(entry, in, true), name, shared.get());
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
        json_t* first = inner_object(object, json_string_value(row["first"]), false);
        json_t* second = inner_object(object, json_string_value(row["second"]), false);
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
        for (const Pattern& place : row.places) {
            const std::string name = place.last_names().front();
            if (!place.parent().matches(at) || !json_is_object(object)) continue;
            const Tree read{json_incref(inner_object(document, json_string_value(row["from"]), false))};
            json_t* there = json_object_get(object, name.c_str());
            seen += there != nullptr && json_equal(there, read.get()) == 0;
            json_object_del(object, name.c_str());
            json_object_set(object, name.c_str(), read.get());
        }
    });
    return seen;
}

// Whether the row is for such documents at all.
bool is_meant(const Row& row, json_t* document) {
    const char* place;
    json_t* value;
    json_object_foreach(row["in documents with"], place, value) {
        if (!json_equal(inner_object(document, place, false), value)) return false;
    }
    return true;
}

size_t apply(const Row& row, json_t* document) {
    if (!is_meant(row, document)) return 0;
    const std::string loss = json_string_value(row["loss"]);
    if (loss == "derived contype") return derive_contype(row, document);
    if (loss == "read elsewhere") return read_elsewhere(row, document);
    if (loss == "reserved hosts") return join_hosts(row, document);
    if (loss == "shared") return share_values(row, document);
    if (loss == "number taken") return drop_taken_numbers(row, document);
    if (loss == "joined") return join_twins(row, document);
    return loss == "added" || loss == "default" ? add_members(row, document) : change_values(row, document);
}

}  // namespace

Losses::Losses(Side side, const std::vector<Row>& rows, json_t* example) {
    for (const Row& row : rows)
        if (row.is_of(side) && row.may_be_in(example)) rows_.push_back(&row);
}

Tree Losses::apply_to(json_t* document) const {
    Tree kept{json_deep_copy(document)};
    for (const Row* row : rows_) row->seen += apply(*row, kept.get());
    return kept;
}
