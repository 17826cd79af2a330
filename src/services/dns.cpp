// The DNS servers: two sections in the old layout, one for each address family; two parts of one in the new.
#include "frame/growing_text.h"
#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// The old layout keeps the servers in one text, each followed by a "|".

int servers_to_new(json_t* part, Key key, json_t* servers, const Report& report) {
    if (servers == nullptr) return 0;
    set(part, key, list_of_pieces(view_of(servers), '|'));
    return json_is_string(servers) ? 0 : report.fail("Invalid field \"servers\", is not string");
}

// Written in every case: "" where there is no list, or no server in it.
int servers_to_old(json_t* section, Key key, json_t* servers, const Report& report) {
    int failures = 0;
    const GrowingText text{string_init(0)};
    for (const auto [number, server] : Instances{servers}) {
        if (!json_is_string(server)) {
            failures +=
                report.fail_at(servers, Decimal{number}, "Invalid instance of field \"servers\", is not string");
            continue;
        }
        string_add(text.get(), text_of(server));
        string_add(text.get(), "|");
    }
    if (text != nullptr) set(section, key, string(text->text));
    return failures;
}

constexpr Word<servers_to_new, servers_to_old> servers;

// clang-format off
constexpr auto kPart = fields(
    carried("manual"),
    carried("ifname"),
    carried("contag"),
    carried("defroute"),
    servers("servers"));
// clang-format on

constexpr const char* kAuthor = "parse_dns";

// The part is written for an absent section, too.
int part_to_new(json_t* section, json_t* dns, Key family, k_err_t* err) {
    Json part = object();
    const int failures = to_new(kPart, section, part.get(), Report{kAuthor, err});
    set(dns, family, std::move(part));
    return failures;
}

int part_to_old(json_t* dns, Key family, json_t* section, k_err_t* err) {
    json_t* const part = get(dns, family);
    return part == nullptr ? 0 : to_old(kPart, part, section, Report{kAuthor, err});
}

}  // namespace

int parse_old_dns(json_t* source, json_t* destination, k_err_t* err) {
    return part_to_new(source, destination, "ipv4", err);
}

int parse_old_dns6(json_t* source, json_t* destination, k_err_t* err) {
    return part_to_new(source, destination, "ipv6", err);
}

int parse_new_dns(json_t* source, json_t* destination, k_err_t* err) {
    return part_to_old(source, "ipv4", destination, err);
}

int parse_new_dns6(json_t* source, json_t* destination, k_err_t* err) {
    return part_to_old(source, "ipv6", destination, err);
}
