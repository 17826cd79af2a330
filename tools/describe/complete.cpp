// What a conversion does not bring back is not added, and what it needs is not taken out: each change is tried.
#include "complete.h"

#include <set>

#include "numbered_list.h"

namespace describe {

namespace {

using Places = std::set<std::string>;

void add_places(Side side, Path& path, const std::string& place, json_t* value, const PlaceNames& known,
                Places& places) {
    places.insert(place);
    const auto step_into = [&](const std::string& name, json_t* member) {
        const std::string inner = known.inside(side, place, path, {name, member});
        path.push_back({name, member});
        add_places(side, path, inner, member, known, places);
        path.pop_back();
    };
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) step_into(name, member);
    for (size_t at = 0; at < json_array_size(value); ++at) step_into(std::to_string(at), json_array_get(value, at));
}

Places places_of(Side side, json_t* document, const PlaceNames& known) {
    Places places;
    Path path;
    add_places(side, path, "", document, known, places);
    return places;
}

// The places of a document and of what it becomes; none when it is not converted in silence.
std::pair<Places, Places> all_places(Side side, uint8_t flags, json_t* document, const PlaceNames& known) {
    const Answer answer = convert(side, document, flags);
    if (!answer.is_silent()) return {};
    return {places_of(side, document, known), places_of(other(side), answer.result.get(), known)};
}

// The places that come back from the other layout.
Places places_that_return(Side side, json_t* document, const PlaceNames& known) {
    const Answer there = convert(side, document, 0);
    if (!there.is_silent()) return {};
    const Answer back = convert(other(side), there.result.get(), 0);
    return back.is_silent() ? places_of(side, back.result.get(), known) : Places{};
}

json_t* interfaces_of(Side side, json_t* document) {
    return side == Side::kOld ? json_object_get(document, "ifaces")
                              : json_object_get(json_object_get(document, "Device"), "Ifaces");
}

bool has_services_of_each_type(const std::string& type) {
    return type == "ethernet" || type == "atm";
}

// Each type of service that some interface has, with all members of its kind.
using Samples = std::vector<std::pair<std::string, Tree>>;

void add_sample(Samples& samples, const std::string& type, json_t* service) {
    for (auto& [known, sample] : samples)
        if (known == type) {
            json_object_update_missing(sample.get(), service);
            return;
        }
    samples.emplace_back(type, Tree{json_deep_copy(service)});
}

template <class Visit>
void for_each_entry(json_t* list, const Visit& visit) {
    const char* name;
    json_t* entry;
    json_object_foreach(list, name, entry) if (json_is_object(entry)) visit(std::string{name}, entry);
}

bool is_brought_back(Side side, json_t* document, const Names& service, const PlaceNames& known) {
    return places_that_return(side, document, known).count(known.place(side, {document}, service)) != 0;
}

void add_old_services(json_t* document, const PlaceNames& known) {
    Samples samples;
    std::vector<std::string> ifaces;
    for_each_entry(interfaces_of(Side::kOld, document), [&](const std::string& name, json_t* iface) {
        const std::string type = json_string_value(json_object_get(iface, "type"));
        if (!has_services_of_each_type(type)) return;
        ifaces.push_back(name);
        for_each_entry(json_object_get(iface, "services"), [&](const std::string&, json_t* service) {
            add_sample(samples, json_string_value(json_object_get(service, "type")), service);
        });
    });
    for (const std::string& iface : ifaces)
        for (const auto& [type, sample] : samples) {
            json_t* const services = at(document, {"ifaces", iface, "services"});
            const std::string name = iface + "_" + type;
            json_object_set_new(services, name.c_str(), json_deep_copy(sample.get()));
            if (!is_brought_back(Side::kOld, document, {"ifaces", iface, "services", name}, known))
                json_object_del(services, name.c_str());
        }
}

void add_new_services(json_t* document, const PlaceNames& known) {
    Samples samples;
    json_t* const groups = interfaces_of(Side::kNew, document);
    for_each_entry(groups, [&](const std::string& type, json_t* list) {
        if (!has_services_of_each_type(type)) return;
        for_each_entry(list, [&](const std::string&, json_t* iface) {
            for_each_entry(json_object_get(iface, "services"), [&](const std::string& service, json_t* entries) {
                for_each_entry(entries,
                               [&](const std::string&, json_t* entry) { add_sample(samples, service, entry); });
            });
        });
    });
    for_each_entry(groups, [&](const std::string& type, json_t* list) {
        if (!has_services_of_each_type(type)) return;
        for (const auto& [service, sample] : samples) {
            json_t* const services = at(list, {"1", "services"});
            if (services == nullptr) continue;
            const Tree before{json_deep_copy(json_object_get(services, service.c_str()))};
            if (before == nullptr)
                json_object_set_new(services, service.c_str(), json_pack("{s:{}, s:i}", "1", "max_instance", 1));
            json_t* const entries = json_object_get(services, service.c_str());
            const std::string number = std::to_string(json_object_size(entries));
            json_object_set_new(entries, before == nullptr ? "1" : number.c_str(), json_deep_copy(sample.get()));
            const Names place{"Device", "Ifaces", type, "1", "services", service, before == nullptr ? "1" : number};
            json_object_set_new(at(document, place), "ifname_l3", json_string((type + "_" + service).c_str()));
            json_object_set_new(entries, "max_instance",
                                json_integer(static_cast<json_int_t>(json_object_size(entries) - 1)));
            if (is_brought_back(Side::kNew, document, place, known)) continue;
            if (before == nullptr)
                json_object_del(services, service.c_str());
            else
                json_object_set(services, service.c_str(), before.get());
        }
    });
}

// Containers with their names, outer ones first.
void add_containers(json_t* value, Names& names, std::vector<Names>& containers) {
    if (json_is_object(value) || json_is_array(value)) containers.push_back(names);
    const auto step_into = [&](const std::string& name, json_t* member) {
        names.push_back(name);
        add_containers(member, names, containers);
        names.pop_back();
    };
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) step_into(name, member);
    for (size_t at = 0; at < json_array_size(value); ++at) step_into(std::to_string(at), json_array_get(value, at));
}

// Without one entry: of an array or numbered list the last one. Null where it has none to spare.
std::vector<Tree> with_one_less(json_t* container) {
    std::vector<Tree> shorter;
    if (json_array_size(container) > 1) {
        shorter.emplace_back(json_copy(container));
        json_array_remove(shorter.back().get(), json_array_size(container) - 1);
    } else if (is_numbered_list(container)) {
        size_t last = json_object_size(container);
        while (last > 1 && json_object_get(container, std::to_string(last).c_str()) == nullptr) --last;
        if (last < 2) return shorter;
        shorter.emplace_back(json_copy(container));
        json_object_del(shorter.back().get(), std::to_string(last).c_str());
        if (json_object_get(container, "max_instance") != nullptr)
            json_object_set_new(shorter.back().get(), "max_instance", json_integer(static_cast<json_int_t>(last - 1)));
    } else {
        for_each_entry(container, [&](const std::string& name, json_t*) {
            shorter.emplace_back(json_copy(container));
            json_object_del(shorter.back().get(), name.c_str());
        });
    }
    return shorter;
}

void replace(json_t* document, const Names& names, json_t* value) {
    json_t* const above = at(document, {names.begin(), names.end() - 1});
    if (json_is_array(above))
        json_array_set(above, std::strtoul(names.back().c_str(), nullptr, 10), value);
    else
        json_object_set(above, names.back().c_str(), value);
}

bool leave_one_out(Side side, uint8_t flags, json_t* document, const Names& names, const PlaceNames& known) {
    const auto wanted = all_places(side, flags, document, known);
    const Tree whole{json_incref(at(document, names))};
    for (const Tree& shorter : with_one_less(whole.get())) {
        replace(document, names, shorter.get());
        if (all_places(side, flags, document, known) == wanted) return true;
    }
    replace(document, names, whole.get());
    return false;
}

}  // namespace

void add_services(Side side, json_t* document, const PlaceNames& names) {
    if (side == Side::kOld)
        add_old_services(document, names);
    else
        add_new_services(document, names);
}

void leave_out_repetitions(Side side, uint8_t flags, json_t* document, const PlaceNames& names) {
    std::vector<Names> containers;
    Names root;
    add_containers(document, root, containers);
    for (const Names& container : containers)
        while (!container.empty() && at(document, container) != nullptr &&
               leave_one_out(side, flags, document, container, names)) {
        }
}

}  // namespace describe
