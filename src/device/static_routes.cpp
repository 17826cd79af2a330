// Static routes: one array of both families against an instance list for each family.
#include <netinet/in.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "frame/growing_text.h"
#include "frame/list.h"
#include "frame/number.h"
#include "k_addr.h"
#include "k_cnvrt.h"
#include "k_conf.h"
#include "k_str.h"

using namespace kcnvrt;

namespace {

// clang-format off
// What both families carry; the gateway has another new name in each.
constexpr auto kIpv4Route = fields(
    //      old        new
    carried("gw",      "GatewayIPAddress"),
    carried("met",     "ForwardingMetric"),
    carried("Default"));

constexpr auto kIpv6Route = fields(
    //      old        new
    carried("gw",      "NextHop"),
    carried("met",     "ForwardingMetric"),
    carried("Default"));
// clang-format on

// How each layout says that a route goes over every interface.
constexpr char kOldEveryInterface[] = "auto";
constexpr char kNewEveryInterface[] = "all";

// Towards the old layout.

void set_netmask(json_t* route, std::string_view length) {
    char mask[32];
    if (k_addr_v4_prefix_to_mask(read_loosely(length), mask, sizeof mask) != 0) mask[0] = '\0';
    set(route, "netmask", string(mask));
}

void set_destination(json_t* route, json_t* prefix) {
    const std::string_view text = view_of(prefix);
    if (text.find('.') == text.npos) {  // IPv6 keeps its length in the address
        if (json_is_string(prefix)) carry(route, "ip", prefix);
        return;
    }
    const size_t slash = text.find('/');
    set(route, "ip", string(std::string_view{text.data(), std::min(slash, text.size())}));
    if (slash != text.npos) set_netmask(route, {text.data() + slash + 1, text.size() - slash - 1});
}

Json route_to_old(json_t* instance, const Report& report) {
    Json route = object();
    if (is_text(get(instance, "Interface"), kNewEveryInterface)) set(route.get(), "iface", string(kOldEveryInterface));
    set_destination(route.get(), get(instance, "DestIPPrefix"));
    to_old(has(instance, "GatewayIPAddress") ? Fields{kIpv4Route} : Fields{kIpv6Route}, instance, route.get(), report);
    return route;
}

// Towards the new layout.

// The instance list of one family. Its "max_instance" is the highest number stored, not a count.
class Routes {
public:
    Routes() : routes_{object()} { set_max_instance(routes_.get(), 0); }

    void store(size_t number, Json route) {
        set(routes_.get(), Decimal{static_cast<int64_t>(number)}, std::move(route));
        highest_ = static_cast<uint32_t>(number);
    }

    void finish(json_t* routing, Key family) {
        if (highest_ != 0) set_max_instance(routes_.get(), highest_);
        Json branch = object();
        set(branch.get(), "Routes", std::move(routes_));
        set(routing, family, std::move(branch));
    }

private:
    Json routes_;
    uint32_t highest_ = 0;
};

Json new_route(json_t* old_route) {
    Json route = object();
    set(route.get(), "Enable", boolean(true));
    set(route.get(), "Status", string(""));
    set(route.get(), "Origin", string("user"));
    if (is_text(get(old_route, "iface"), kOldEveryInterface)) set(route.get(), "Interface", string(kNewEveryInterface));
    return route;
}

// The address and the length of its netmask; nothing where the netmask is missing or is none.
void set_ipv4_prefix(json_t* route, const char* address, const char* netmask) {
    const int length = k_addr_v4_mask_to_prefix(netmask);
    if (length < 0) return;
    char prefix[INET_ADDRSTRLEN + 4];
    std::snprintf(prefix, sizeof prefix, "%s/%d", address, length);
    set(route, "DestIPPrefix", string(prefix));
}

void add_ipv4(json_t* old_route, size_t number, Json route, Routes& routes, const Report& report) {
    set_ipv4_prefix(route.get(), text_of(old_route, "ip"), text_of(old_route, "netmask"));
    to_new(kIpv4Route, old_route, route.get(), report);
    routes.store(number, std::move(route));
}

// An address without a length is a prefix of the whole address.
int add_ipv6(json_t* old_route, size_t number, Json route, Routes& routes, const Report& report) {
    const char* const address = text_of(old_route, "ip");
    const GrowingText prefix{string_init_chars(address)};
    if (prefix == nullptr) return report.fail_at(old_route, "ip", "strdup error:\n");
    if (std::strchr(address, '/') == nullptr && string_add(prefix.get(), "/128") != 0)
        return report.fail_at(old_route, "ip", "realloc error:\n");
    if (k_addr_is_ippfx_correct(AF_INET6, prefix->text) == 0)
        return report.fail_at(old_route, "ip", "Invalid field ip!\n");
    to_new(kIpv6Route, old_route, route.get(), report);
    set(route.get(), "DestIPPrefix", string(prefix->text));
    routes.store(number, std::move(route));
    return 0;
}

int add_route(json_t* old_route, size_t number, Routes& ipv4, Routes& ipv6, const Report& report) {
    Json route = new_route(old_route);
    if (route == nullptr) return report.fail("Error json_pack!\n");
    const char* const address = text_of(old_route, "ip");
    if (address == nullptr) return report.fail_at(old_route, "ip", "Invalid field ip!\n");
    if (k_addr_v4_is_correct(address) == 0) return add_ipv6(old_route, number, std::move(route), ipv6, report);
    add_ipv4(old_route, number, std::move(route), ipv4, report);
    return 0;
}

}  // namespace

// Both families under one numbering. Of two routes of a number the IPv4 one is written, and without a list of IPv4
// routes none is: stored configurations depend on both.
int k_cnvrt_get_route_from_new(json_t* routing, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    json_t* const ipv4 = k_conf_find_branch(routing, "ipv4.Routes.", 0);
    json_t* const ipv6 = k_conf_find_branch(routing, "ipv6.Routes.", 0);
    if (!json_is_object(ipv4)) return 0;
    int failures = 0;
    const int highest = max_number(ipv4);
    const int highest_of_ipv6 = max_number(ipv6);
    const int last = highest_of_ipv6 > highest ? last_of_every_number(highest_of_ipv6, ipv6, report, failures)
                                               : last_of_every_number(highest, ipv4, report, failures);
    for (int number = 1; number <= last; ++number) {
        json_t* const own = entry_at(ipv4, number);
        json_t* const instance = own == nullptr ? entry_at(ipv6, number) : own;
        append(destination, instance == nullptr ? object() : route_to_old(instance, report));
    }
    return failures;
}

int k_cnvrt_get_route_from_old(json_t* source, json_t* routing, k_err_t* err) {
    const Report report{__func__, err};
    int failures = 0;
    Routes ipv4;
    Routes ipv6;
    for (const auto [number, route] : elements(source))
        failures +=
            report.placed_entry(add_route(route, number, ipv4, ipv6, report), source, static_cast<int64_t>(number));
    ipv4.finish(routing, "ipv4");
    ipv6.finish(routing, "ipv6");
    return failures;
}
