// The virtual servers: rules that forward ports to hosts of the LAN.
#include "frame/nested.h"
#include "frame/number.h"
#include "k_cnvrt.h"
#include "k_cnvrt/service_lists.h"

using namespace kcnvrt;

namespace {

// A bound of a port range. Unlike an integer elsewhere it must be there, and "" stands for 0.
int port_to_new(json_t* rule, Key key, json_t* port, const Report& report) {
    if (json_is_integer(port)) {
        carry(rule, key, port);
        return 0;
    }
    if (!json_is_string(port)) return report.fail("Invalid field \"%s\", is not string", key.text());
    uint32_t number = 0;
    if (json_string_length(port) != 0 && !read_strictly(view_of(port), number))
        return report.fail("Invalid field \"%s\", error parsing integer from string", key.text());
    // Kept as a signed 32-bit quantity: "4294967295" is stored as -1.
    set(rule, key, integer(static_cast<int32_t>(number)));
    return 0;
}

int port_to_old(json_t* rule, Key key, json_t* port, const Report& report) {
    if (port == nullptr) return 0;
    if (!json_is_integer(port)) return report.fail("Invalid field \"%s\", is not integer", key.text());
    const json_int_t number = json_integer_value(port);
    set(rule, key, number == 0 ? string("") : string(Decimal{number}));
    return 0;
}

constexpr Word<port_to_new, port_to_old> port_field;

// clang-format off
constexpr auto kRule = fields(
    port_field ("ports_begin"),
    port_field ("ports_end"),
    port_field ("portd_begin"),
    port_field ("portd_end"),
    carried    ("name"),
    carried    ("source_iface"),
    carried    ("proto"),
    carried    ("ipd"),
    carried    ("remote_ip"),
    carried    ("type"),
    carried    ("enable_snat"));
// clang-format on

// The number that a member name begins with; 0 when it begins with anything but a digit.
int leading_number(std::string_view name) {
    return !name.empty() && is_digit(name[0]) ? read_loosely(name) : 0;
}

// The old layout counts the rules from 0.
int number_to_old(json_t* rules, Key name, json_t* old_rule, const Report& report) {
    const int number = leading_number(name.view());
    if (number < 1) return report.fail_at(rules, name, "Invalid element of object %s, index < 1", name.text());
    set(old_rule, "num", integer(number - 1));
    return 0;
}

}  // namespace

int parse_old_vserver(json_t* source, json_t* destination, k_err_t* err) {
    // Unlike the other lists this one writes no "max_instance" for a source that is no list.
    return json_is_array(source) ? list_to_new(kRule, source, destination, Report{__func__, err}) : 0;
}

int parse_new_vserver(json_t* source, json_t* destination, k_err_t* err) {
    const Report report{__func__, err};
    int failures = 0;
    // The rules come in the order of the members, whatever their numbers are, and gaps leave nothing.
    for (const auto [name, rule] : members(source)) {
        if (!json_is_object(rule)) continue;
        Json old_rule = object();
        failures += number_to_old(source, name, old_rule.get(), report);
        failures += to_old(kRule, rule, old_rule.get(), report);
        append(destination, std::move(old_rule));
    }
    return failures;
}
