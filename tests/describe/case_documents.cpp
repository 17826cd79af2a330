// The converter that a case calls says where its source stands.
#include "case_documents.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <tuple>

#include "k_cnvrt.h"

namespace describe {

namespace {

struct Source {
    const char* call;
    Side side;
    const char* place;  // "" where it is the whole configuration
    uint8_t flags = 0;
    bool (*is_there)(json_t* source) = nullptr;  // of two places, which of two forms stands there
};

bool is_array(json_t* source) {
    return json_is_array(source);
}
bool is_object(json_t* source) {
    return json_is_object(source) && json_object_get(source, "login") == nullptr;
}
bool is_legacy(json_t* source) {
    return json_object_get(source, "Queue") == nullptr && json_object_get(source, "links") != nullptr;
}
bool is_current(json_t* source) {
    return json_object_get(source, "Queue") != nullptr;
}

// clang-format off
const Source kSources[] = {
    // call                                  layout       place
    {"k_cnvrt_to_new",                       Side::kOld, ""},
    {"k_cnvrt_get_ifaces_from_old",          Side::kOld, ""},
    {"k_cnvrt_get_services_from_old",        Side::kOld, ""},
    {"k_cnvrt_get_routing_from_old",         Side::kOld, ""},
    {"k_cnvrt_get_deviceinfo_from_old",      Side::kOld, ""},
    {"k_cnvrt_get_customs_from_old",         Side::kOld, ""},
    {"k_cnvrt_get_vlan_dsl_from_old",        Side::kOld, "", K_CNVRT_DSL_VLAN},
    {"k_cnvrt_get_sections_ifaces_from_old", Side::kOld, "/ifaces"},
    {"k_cnvrt_parse_old_phys_ifaces",        Side::kOld, "/phys_ifaces"},
    {"k_cnvrt_get_wifi_from_old",            Side::kOld, "/wifi"},
    {"k_cnvrt_get_qos_from_old",             Side::kOld, "/qos", 0, is_legacy},
    {"k_cnvrt_get_qos_from_old",             Side::kOld, "/queuemanagement", 0, is_current},
    {"k_cnvrt_get_voip_from_old",            Side::kOld, "/voip"},
    {"k_cnvrt_get_roaming_from_old",         Side::kOld, "/roaming"},
    {"k_cnvrt_get_users_from_old",           Side::kOld, "/users", 0, is_object},
    {"k_cnvrt_get_users_from_old",           Side::kOld, "/passwd", 0, is_array},
    {"k_cnvrt_get_sysusers_from_old",        Side::kOld, "/sysusers"},
    {"k_cnvrt_get_vlan_from_old",            Side::kOld, "/vlan"},
    {"k_cnvrt_get_route_from_old",           Side::kOld, "/route"},
    {"k_cnvrt_get_rip_from_old",             Side::kOld, "/rip"},
    {"k_cnvrt_get_remote_from_old",          Side::kOld, "/httpaccess"},
    {"k_cnvrt_get_wan_pvid_from_old",        Side::kOld, "/wan_pvid"},
    {"k_cnvrt_get_port_settings_from_old",   Side::kOld, "/ports_config"},
    {"k_cnvrt_get_port_bandwidth_from_old",  Side::kOld, "/port_bandwidth"},
    {"k_cnvtr_get_default_ssid_from_old",    Side::kOld, "/default_ssid"},
    {"k_cnvrt_to_old",                       Side::kNew, ""},
    {"k_cnvrt_get_ifaces_from_new",          Side::kNew, ""},
    {"k_cnvrt_get_sections_ifaces_from_new", Side::kNew, "/Device/Ifaces"},
    {"k_cnvrt_parse_new_phys",               Side::kNew, "/Device/Ifaces/phys_ifaces"},
    {"k_cnvrt_get_wifi_from_new",            Side::kNew, "/Device/WiFi"},
    {"k_cnvrt_get_qos_from_new",             Side::kNew, "/Device/QoS"},
    {"k_cnvrt_get_voip_from_new",            Side::kNew, "/Device/Voip"},
    {"k_cnvrt_get_roaming_from_new",         Side::kNew, "/Device/Roaming"},
    {"k_cnvrt_get_users_from_new",           Side::kNew, "/Device/Users"},
    {"k_cnvrt_get_sysusers_from_new",        Side::kNew, "/Device/Users/sysusers"},
    {"k_cnvrt_get_vlan_from_new",            Side::kNew, "/Device/Vlan"},
    {"k_cnvrt_get_vlan_dsl_from_new",        Side::kNew, "/Device/Vlan", K_CNVRT_DSL_VLAN},
    {"k_cnvrt_get_routing_from_new",         Side::kNew, "/Device/Routing"},
    {"k_cnvrt_get_route_from_new",           Side::kNew, "/Device/Routing"},
    {"k_cnvrt_get_rip_from_new",             Side::kNew, "/Device/Routing/RIP"},
    {"k_cnvrt_get_remote_from_new",          Side::kNew, "/Device/RemoteAccess"},
    {"k_cnvrt_get_wan_pvid_from_new",        Side::kNew, "/Device/wan_pvid"},
    {"k_cnvrt_get_port_settings_from_new",   Side::kNew, "/Device/Port_settings"},
    {"k_cnvrt_get_port_bandwidth_from_new",  Side::kNew, "/Device/Port_bandwidth"},
    {"k_cnvtr_get_default_ssid_from_new",    Side::kNew, "/Device/Default_ssid"},
    {"k_cnvrt_get_services_from_new",        Side::kNew, "/Device/Services"},
    {"k_cnvrt_get_deviceinfo_from_new",      Side::kNew, "/Device/DeviceInfo"},
    {"k_cnvrt_get_customs_from_new",         Side::kNew, "/Device/Customization"},
    {"parse_new_ipsec",                      Side::kNew, "/Device/Services/vpn/ipsec"},
};
// clang-format on

Tree inside(json_t* value, const Names& names) {
    Tree tree{json_incref(value)};
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        tree.reset(json_pack("{s:o}", name->c_str(), tree.release()));
    return tree;
}

void add(std::vector<Document>& documents, Side side, const std::string& place, json_t* source, uint8_t flags) {
    Tree root = inside(source, names_of(place));
    if (json_is_object(root.get())) documents.push_back({side, std::move(root), flags});
}

// A service has the name that its converter has.
void add_service(std::vector<Document>& documents, const std::string& call, json_t* source) {
    for (const auto& [start, side, above] :
         {std::tuple{"parse_old_", Side::kOld, "/"}, std::tuple{"parse_new_", Side::kNew, "/Device/Services/"}})
        if (call.starts_with(start)) add(documents, side, above + call.substr(std::strlen(start)), source, 0);
}

void add_case(std::vector<Document>& documents, json_t* data) {
    const std::string call = json_string_value(json_object_get(data, "call"));
    json_t* const source = json_object_get(data, "source");
    if (source == nullptr) return;
    bool is_listed = false;
    for (const Source& row : kSources)
        if (row.call == call) {
            is_listed = true;
            if (row.is_there != nullptr && !row.is_there(source)) continue;
            add(documents, row.side, row.place, source, row.flags);
        }
    if (!is_listed) add_service(documents, call, source);
}

// In the order of their names.
std::vector<std::filesystem::path> files_in(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder})
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<Document> documents_of_cases(const std::filesystem::path& folder) {
    std::vector<Document> documents;
    for (const auto& file : files_in(folder)) {
        const Tree cases{json_load_file(file.c_str(), 0, nullptr)};
        size_t number;
        json_t* data;
        json_array_foreach(cases.get(), number, data) add_case(documents, data);
    }
    return documents;
}

// The flags come first, and behind the text what it grows by.
std::vector<Document> documents_of_corpus(const std::filesystem::path& folder) {
    std::vector<Document> documents;
    for (const auto& [target, side] :
         {std::pair{"document_to_new", Side::kOld}, std::pair{"document_to_old", Side::kNew}})
        for (const auto& file : files_in(folder / target)) {
            std::ostringstream bytes;
            bytes << std::ifstream{file, std::ios::binary}.rdbuf();
            const std::string text = bytes.str().substr(std::min<size_t>(1, bytes.str().size()));
            Tree root{json_loads(text.c_str(), 0, nullptr)};
            if (json_is_object(root.get())) documents.push_back({side, std::move(root)});
        }
    return documents;
}

}  // namespace describe
