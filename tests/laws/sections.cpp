// The examples taken apart. What makes one section together in the other layout stays together.
#include "sections.h"

#include <cstdio>
#include <utility>

namespace {

// Members of the old root that make one section of the new layout together.
const std::vector<std::vector<std::string>> kOldGroups = {
    {"max_table_id", "pppoe_pass_through", "usbmodem_autoconnect", "phys_ifaces", "ppp_inf", "lan", "ifaces"},
    {"passwd", "sysusers"},
    {"users", "sysusers"},
    {"dns", "dns6"},
    {"add_sets", "lang", "tr069"},
};

std::vector<std::string> group_of(const std::string& name, json_t* document) {
    for (const auto& group : kOldGroups)
        for (const std::string& member : group)
            if (member == name && (name != "sysusers" || json_object_get(document, group[0].c_str()) != nullptr))
                return group;
    return {name};
}

Section section_of(std::string name, Side side, Tree example) {
    return {std::move(name), side, {example.release(), json_decref}};
}

void add_old_sections(std::vector<Section>& sections, json_t* document, const std::string& suffix) {
    const char* name;
    json_t* value;
    json_object_foreach(document, name, value) {
        const auto group = group_of(name, document);
        Tree part{json_object()};
        bool is_first = true;
        for (const std::string& member : group) {
            json_t* there = json_object_get(document, member.c_str());
            if (there == nullptr) continue;
            is_first = is_first && (json_object_size(part.get()) > 0 || member == name);
            json_object_set_new(part.get(), member.c_str(), json_deep_copy(there));
        }
        if (is_first) sections.push_back(section_of(name + suffix, Side::kOld, std::move(part)));
    }
}

void add_new_sections(std::vector<Section>& sections, json_t* document, const std::string& suffix) {
    const char* name;
    json_t* value;
    json_t* services = json_object_get(json_object_get(document, "Device"), "Services");
    json_object_foreach(services, name, value) sections.push_back(
        section_of(std::string{"Services_"} + name + suffix, Side::kNew,
                   Tree{json_pack("{s:{s:{s:o}}}", "Device", "Services", name, json_deep_copy(value))}));
    json_object_foreach(json_object_get(document, "Device"), name, value) {
        if (value == services) continue;
        sections.push_back(
            section_of(name + suffix, Side::kNew, Tree{json_pack("{s:{s:o}}", "Device", name, json_deep_copy(value))}));
    }
    json_object_foreach(document, name, value) {
        if (std::string{name} == "Device") continue;
        sections.push_back(section_of(name + suffix, Side::kNew,
                                      Tree{json_pack("{s:o, s:{}}", name, json_deep_copy(value), "Device")}));
    }
}

// What that example has in another form than the first: quality of service, and the users.
Tree other_generation(Tree document) {
    const auto keep = [](json_t* object, const std::vector<std::string>& names) {
        Tree kept{json_object()};
        for (const std::string& name : names)
            if (json_t* value = json_object_get(object, name.c_str())) json_object_set(kept.get(), name.c_str(), value);
        return kept;
    };
    Tree device = keep(json_object_get(document.get(), "Device"), {"QoS", "Users"});
    if (json_object_size(device.get()) == 0) return keep(document.get(), {"qos", "passwd"});
    return Tree{json_pack("{s:o}", "Device", device.release())};
}

}  // namespace

void PrintTo(const Section& section, std::ostream* out) {
    *out << section.name;
}

Tree load_example(const std::string& name) {
    const std::string path = KCNVRT_EXAMPLES "/" + name;
    json_error_t error;
    Tree tree{json_load_file(path.c_str(), JSON_REJECT_DUPLICATES, &error)};
    if (tree == nullptr) std::fprintf(stderr, "%s:%d: %s\n", path.c_str(), error.line, error.text);
    return tree;
}

std::vector<Section> sections_of(Side side, json_t* document, const std::string& suffix) {
    std::vector<Section> sections;
    if (side == Side::kOld)
        add_old_sections(sections, document, suffix);
    else
        add_new_sections(sections, document, suffix);
    return sections;
}

std::vector<Section> sections_of_examples() {
    std::vector<Section> sections;
    add_old_sections(sections, load_example("home-gateway.old.json").get(), "");
    add_old_sections(sections, other_generation(load_example("dsl-gateway.old.json")).get(), "_of_other_generation");
    add_new_sections(sections, load_example("home-gateway.new.json").get(), "");
    add_new_sections(sections, other_generation(load_example("dsl-gateway.new.json")).get(), "_of_other_generation");
    return sections;
}

Tree with_users(Side side, Tree document) {
    const bool has_users =
        json_object_get(document.get(), "passwd") != nullptr || json_object_get(document.get(), "users") != nullptr;
    if (side == Side::kOld && !has_users) json_object_set_new(document.get(), "passwd", json_array());
    return document;
}
