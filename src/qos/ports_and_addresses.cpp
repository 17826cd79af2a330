// What a filter selects by in one text each: "80:90" ports and "192.0.2.1-192.0.2.9" addresses. In the new layout the
// first and the last are members of their own.
#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "qos/qos.h"

namespace kcnvrt {

namespace {

// Reads a number as "%d" does and returns what follows it, or null. A number beyond the range of int, which "%d" leaves
// undefined, is the nearest int.
const char* read_number(const char* text, int& number) {
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    number = static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
    return end == text ? nullptr : end;
}

// "%d:%d"
bool read_range(const char* text, int& first, int& last) {
    const char* const rest = read_number(text, first);
    return rest != nullptr && *rest == ':' && read_number(rest + 1, last) != nullptr;
}

int convert_multiport(json_t* filter, json_t* new_class, const Report& report) {
    const char* const text = text_of(filter, "multiport");
    if (text == nullptr) return 0;
    const bool is_range = std::strchr(text, ':') != nullptr;
    int first = 0;
    int last = 0;
    if (is_range ? !read_range(text, first, last) : read_number(text, first) == nullptr)
        return report.under(__func__).fail_at(filter, "multiport", "Error format \"multiport\" (%s)!", text);
    set(new_class, "DestPort", integer(first));
    if (is_range) set(new_class, "DestPortRangeMax", integer(last));
    return 0;
}

struct AddressNames {
    Key first;
    Key last;
};

AddressNames source_addresses() {
    return {"SourceIP", "SourceIPRangeMax"};
}
AddressNames destination_addresses() {
    return {"DestIP", "DestIPRangeMax"};
}

// The longest text of one address towards the new layout, and of both joined towards the old, with its NUL. The widths
// in the format below are one less.
constexpr size_t kAddressSize = 64;

int convert_iprange(json_t* filter, json_t* new_class, const AddressNames& names, const Report& report) {
    json_t* const range = get(filter, "iprange");
    if (!json_is_string(range)) return 0;
    const char* const text = text_of(range);
    if (std::strchr(text, '-') == nullptr) {
        carry(new_class, names.first, range);
        return 0;
    }
    char first[kAddressSize];
    char last[kAddressSize];
    if (std::sscanf(text, "%63[^-]-%63s", first, last) != 2)
        return report.under(__func__).fail_at(filter, "iprange", "Error format \"iprange\" (%s)", text);
    set(new_class, names.first, checked_string(first));
    set(new_class, names.last, checked_string(last));
    return 0;
}

json_t* address_at(json_t* new_class, Key name) {
    json_t* const address = get(new_class, name);
    return view_of(address).empty() ? nullptr : address;
}

Json joined(json_t* first, json_t* last) {
    char text[kAddressSize];
    std::snprintf(text, sizeof text, "%s-%s", text_of(first), text_of(last));
    return checked_string(text);
}

}  // namespace

int ports_to_new(json_t* filter, json_t* new_class, const Report& report) {
    return convert_multiport(filter, new_class, report);
}

void ports_to_old(json_t* new_class, json_t* filter) {
    const auto first = static_cast<long long>(json_integer_value(get(new_class, "DestPort")));
    const auto last = static_cast<long long>(json_integer_value(get(new_class, "DestPortRangeMax")));
    if (first <= 0) return;
    constexpr size_t kLongest = sizeof "9223372036854775807:9223372036854775807";
    char text[kLongest];
    if (last > 0)
        std::snprintf(text, sizeof text, "%lld:%lld", first, last);
    else
        std::snprintf(text, sizeof text, "%lld", first);
    set(filter, "multiport", string(text));
}

int addresses_to_new(json_t* filter, bool is_upstream, json_t* new_class, const Report& report) {
    return convert_iprange(filter, new_class, is_upstream ? source_addresses() : destination_addresses(), report);
}

void addresses_to_old(json_t* new_class, json_t* filter) {
    // The source side wins whatever the direction of the filter.
    const bool has_source = address_at(new_class, "SourceIP") != nullptr;
    const AddressNames names = has_source ? source_addresses() : destination_addresses();
    json_t* const first = address_at(new_class, names.first);
    json_t* const last = address_at(new_class, names.last);
    if (first == nullptr) return;
    set(filter, "iprange", last == nullptr ? share(first) : joined(first, last));
}

}  // namespace kcnvrt
