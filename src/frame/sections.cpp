// The section tables: which handler builds the section of a name. The two are no mirror images of each other.
#include "frame/sections.h"

namespace kcnvrt {

// clang-format off
constinit const OldSection old_config_handler_table[] = {
    section("ifaces",          k_cnvrt_get_sections_ifaces_from_new, Container::kObject),
    section("netfilter",       json_section_copy,                    Container::kObject),
    section("phys_ifaces",     k_cnvrt_parse_new_phys,               Container::kObject),
    section("wifi",            k_cnvrt_get_wifi_from_new,            Container::kObject),
    section("httpaccess",      k_cnvrt_get_remote_from_new,          Container::kArray),
    section("wan_pvid",        k_cnvrt_get_wan_pvid_from_new,        Container::kObject),
    section("route",           k_cnvrt_get_route_from_new,           Container::kArray),
    section("rip",             k_cnvrt_get_rip_from_new,             Container::kObject),
    section("queuemanagement", k_cnvrt_get_qos_from_new,             Container::kObject),
    section("voip",            k_cnvrt_get_voip_from_new,            Container::kObject),
    section("adsl",            json_section_copy,                    Container::kObject),
    section("ports_config",    k_cnvrt_get_port_settings_from_new,   Container::kObject),
    section("port_bandwidth",  k_cnvrt_get_port_bandwidth_from_new,  Container::kObject),
    section("Firewall",        json_section_copy,                    Container::kObject),
    section("Firewall_v6",     json_section_copy,                    Container::kObject),
    section("default_ssid",    k_cnvtr_get_default_ssid_from_new,    Container::kObject),
    section("autoupdate",      json_section_copy,                    Container::kObject),
    section("dmz",             json_section_copy,                    Container::kObject),
    section("dru_filtering",   json_section_copy,                    Container::kObject),
    section("ftpd",            json_section_copy,                    Container::kObject),
    section("igmp",            json_section_copy,                    Container::kObject),
    section("printserver",     json_section_copy,                    Container::kObject),
    section("redirect",        json_section_copy,                    Container::kObject),
    section("samba",           json_section_copy,                    Container::kObject),
    section("ssh",             json_section_copy,                    Container::kObject),
    section("syslog",          json_section_copy,                    Container::kObject),
    section("telnet",          json_section_copy,                    Container::kObject),
    section("upnp",            json_section_copy,                    Container::kObject),
    section("wan_failover",    json_section_copy,                    Container::kObject),
    // Towards the new layout this section is converted; towards the old one it stays as it is.
    section("yandex",          json_section_copy,                    Container::kObject),
    {},
};

constinit const NewSection new_config_handler_table[] = {
    section("Ifaces",         k_cnvrt_get_sections_ifaces_from_old),
    section("NetFilter",      json_section_copy),
    section("phys_ifaces",    k_cnvrt_parse_old_phys_ifaces),
    section("WiFi",           k_cnvrt_get_wifi_from_old),
    section("RemoteAccess",   k_cnvrt_get_remote_from_old),
    section("wan_pvid",       k_cnvrt_get_wan_pvid_from_old),
    section("Static",         k_cnvrt_get_route_from_old),
    section("rip",            k_cnvrt_get_rip_from_old),
    section("QoS",            k_cnvrt_get_qos_from_old),
    section("Voip",           k_cnvrt_get_voip_from_old),
    section("Adsl",           json_section_copy),
    section("Port_settings",  k_cnvrt_get_port_settings_from_old),
    section("Port_bandwidth", k_cnvrt_get_port_bandwidth_from_old),
    section("Firewall",       json_section_copy),
    section("Firewall_v6",    json_section_copy),
    section("Default_ssid",   k_cnvtr_get_default_ssid_from_old),
    section("autoupdate",     json_section_copy),
    section("dmz",            json_section_copy),
    section("dru_filtering",  json_section_copy),
    section("ftpd",           json_section_copy),
    section("igmp",           json_section_copy),
    section("printserver",    json_section_copy),
    section("redirect",       json_section_copy),
    section("samba",          json_section_copy),
    section("ssh",            json_section_copy),
    section("syslog",         json_section_copy),
    section("telnet",         json_section_copy),
    section("upnp",           json_section_copy),
    section("wan_failover",   json_section_copy),
    {},
};
// clang-format on

}  // namespace kcnvrt
