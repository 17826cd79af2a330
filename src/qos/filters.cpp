// The traffic rules of the legacy generation: "filters" in the old layout; in the new one a class and a policer each,
// under the number of the filter.
#include "frame/nested.h"
#include "qos/qos.h"

namespace kcnvrt {

namespace {

constexpr json_int_t kUpstream = 1;
constexpr json_int_t kDownstream = 2;

int carry_filled(json_t* filter, Key key, json_t* value, const Report&) {
    if (!view_of(value).empty()) carry(filter, key, value);
    return 0;
}

constexpr Word<nullptr, carry_filled> filled_to_old;

// A filter names one MAC address, of the end of the traffic that is on the LAN side.
template <size_t N>
constexpr auto interface_fields(const char (&mac_address)[N]) {
    // Towards old they are visited in the opposite order.
    // clang-format off
    return fields(
        //             old      new
        filled_to_old ("mac",   mac_address),
        carried_to_new("iface", "ClassInterface"),
        carried       ("prio",  "EthernetPriorityMark"),
        carried_to_old("iface", "ClassInterface"),
        carried_to_new("mac",   mac_address));
    // clang-format on
}

constexpr auto kUpstreamInterface = interface_fields("SourceMACAddress");
constexpr auto kDownstreamInterface = interface_fields("DestMACAddress");

Fields interface_of(bool is_upstream) {
    return is_upstream ? Fields{kUpstreamInterface} : Fields{kDownstreamInterface};
}

// clang-format off
constexpr auto kPolicer = fields(
    //            old     new
    integer_field("rate", "CommittedRate"),
    integer_field("ceil", "CommittedCeil"));

constexpr auto kMarks = fields(
    //   old          new
    mark("markdscp",  "DSCPMark"),
    mark("checkdscp", "DSCPCheck"));
// clang-format on

int filter_to_new(json_t* filter, json_t* new_class, json_t* policer, const Report& report) {
    const bool is_upstream = json_is_true(get(filter, "is_wan"));
    int failures = protocol_to_new(filter, new_class, report);
    set(new_class, "TrafficClass", integer(is_upstream ? kUpstream : kDownstream));
    failures += to_new(interface_of(is_upstream), filter, new_class, report);
    failures += to_new(kPolicer, filter, policer, report);
    failures += to_new(kMarks, filter, new_class, report);
    failures += ports_to_new(filter, new_class, report);
    failures += addresses_to_new(filter, is_upstream, new_class, report);
    return failures;
}

int filter_to_old(json_t* new_class, json_t* policer, json_t* filter, const Report& report) {
    const bool is_upstream = json_integer_value(get(new_class, "TrafficClass")) == kUpstream;
    set(filter, "is_wan", boolean(is_upstream));
    set(filter, "scheduler", string(kScheduler));
    int failures = to_old(interface_of(is_upstream), new_class, filter, report);
    failures += to_old(kPolicer, policer, filter, report);
    failures += protocol_to_old(new_class, filter, report);
    failures += to_old(kMarks, new_class, filter, report);
    addresses_to_old(new_class, filter);
    ports_to_old(new_class, filter);
    return failures;
}

}  // namespace

int filters_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err) {
    const Report report{"convert_filters", err};
    json_t* const filters = get(old_qos, "filters");
    Json classes = object();
    Json policers = object();
    const auto convert = [&](int64_t number, json_t* filter, json_t* new_class) {
        Json policer = object();
        const int failures = filter_to_new(filter, new_class, policer.get(), report);
        set(policers.get(), Decimal{number}, std::move(policer));
        return failures;
    };
    const int failures = fill_every_instance(filters, classes.get(), report, convert);
    carry_max_instance(policers.get(), filters);
    set(new_qos, "Classification", std::move(classes));
    set(new_qos, "Policer", std::move(policers));
    return failures;
}

int filters_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err) {
    const Report report{"convert_old_qos", err};
    json_t* const policers = get(new_qos, "Policer");
    Json filters = object();
    const auto convert = [&](int64_t number, json_t* new_class, json_t* filter) {
        return filter_to_old(new_class, entry_at(policers, number), filter, report);
    };
    const int failures = fill_every_instance(get(new_qos, "Classification"), filters.get(), report, convert);
    set(old_qos, "filters", std::move(filters));
    return failures;
}

}  // namespace kcnvrt
