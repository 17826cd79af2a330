#include "place_pattern.h"

#include <algorithm>
#include <iterator>

namespace kcnvrt {

namespace {

// What has members whose names are a device's own.
constexpr std::string_view kNamedEntries[] = {
    "/ifaces",
    "/ifaces/*/services",
    "/ifaces/*/services/*/tunnels",
    "/groups",
    "/users/list",
    "/wan_pvid",
    "/Links",
    "/port_bandwidth",
    "/ports_config",
    "/Device/Users/list",
    "/Device/Links",
};

bool is_number(std::string_view token) {
    return !token.empty() && std::ranges::all_of(token, [](char byte) { return byte >= '0' && byte <= '9'; });
}

bool has_named_entries(std::string_view pattern) {
    return std::ranges::find(kNamedEntries, pattern) != std::end(kNamedEntries);
}

}  // namespace

std::string place_pattern(std::string_view pointer) {
    std::string pattern;
    while (!pointer.empty()) {
        pointer.remove_prefix(1);
        const std::string_view token = pointer.substr(0, pointer.find('/'));
        const bool is_any = is_number(token) || has_named_entries(pattern);
        pattern.append("/").append(is_any ? "*" : token);
        pointer.remove_prefix(token.size());
    }
    return pattern;
}

}  // namespace kcnvrt
