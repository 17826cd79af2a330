// Services of one interface do not know of each other, but those of a bridge, which are two halves of one.
#include "parts.h"

#include "conversion.h"
#include "names.h"

namespace describe {

namespace {

// An object with one of its members only.
Tree only(json_t* object, const char* name) {
    Tree one{json_object()};
    json_object_set(one.get(), name, json_object_get(object, name));
    return one;
}

Tree with_member(json_t* object, const char* name, Tree value) {
    Tree copy{json_copy(object)};
    json_object_set_new(copy.get(), name, value.release());
    return copy;
}

// The interface with each of its services alone; as it is where it has none, or where they belong together.
std::vector<Tree> by_service(json_t* iface, bool belong_together) {
    std::vector<Tree> parts;
    json_t* const services = json_object_get(iface, "services");
    const char* name;
    json_t* service;
    json_object_foreach(services, name, service) if (!belong_together)
        parts.push_back(with_member(iface, "services", only(services, name)));
    if (parts.empty()) parts.emplace_back(json_incref(iface));
    return parts;
}

void add(std::vector<Section>& parts, const std::string& name, Side side, Tree document) {
    parts.push_back({name, side, {json_deep_copy(document.get()), json_decref}});
}

void add_old_ifaces(std::vector<Section>& parts, const Section& section, json_t* ifaces) {
    const char* name;
    json_t* iface;
    json_object_foreach(ifaces, name, iface) {
        for (const Tree& part : by_service(iface, false))
            add(parts, section.name, Side::kOld, Tree{json_pack("{s:{s:O}}", "ifaces", name, part.get())});
    }
}

void add_new_ifaces(std::vector<Section>& parts, const Section& section, json_t* groups) {
    const char* type;
    json_t* group;
    json_object_foreach(groups, type, group) {
        if (json_object_get(json_object_get(group, "1"), "ifname_l2") == nullptr) continue;
        for (const Tree& part : by_service(json_object_get(group, "1"), std::string{type} == "bridge"))
            add(parts, section.name, Side::kNew,
                Tree{
                    json_pack("{s:{s:{s:{s:O, s:i}}}}", "Device", "Ifaces", type, "1", part.get(), "max_instance", 1)});
    }
}

}  // namespace

std::vector<Section> parts_of(Side side, json_t* document) {
    std::vector<Section> parts;
    for (const Section& section : sections_of(side, document)) {
        json_t* const ifaces =
            at(section.example.get(), side == Side::kOld ? Names{"ifaces"} : Names{"Device", "Ifaces"});
        if (ifaces == nullptr) {
            parts.push_back(section);
            continue;
        }
        // What stands beside the interfaces, without them.
        Tree rest{json_deep_copy(section.example.get())};
        if (side == Side::kOld) {
            json_object_set_new(rest.get(), "ifaces", json_object());
        } else {
            json_t* const groups = at(rest.get(), {"Device", "Ifaces"});
            const char* type;
            void* next;
            json_t* group;
            json_object_foreach_safe(groups, next, type,
                                     group) if (json_object_get(json_object_get(group, "1"), "ifname_l2") != nullptr)
                json_object_del(groups, type);
        }
        add(parts, section.name, side, std::move(rest));
        if (side == Side::kOld)
            add_old_ifaces(parts, section, ifaces);
        else
            add_new_ifaces(parts, section, ifaces);
    }
    return parts;
}

}  // namespace describe
