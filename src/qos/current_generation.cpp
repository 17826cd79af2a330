// The current generation: one object model in both layouts. What differs are the masks of the classes, the policer's
// status, and the entry counters that only the old layout has.
#include <algorithm>

#include "k_cnvrt.h"
#include "qos/qos.h"

namespace kcnvrt {

namespace {

// clang-format off
constexpr auto kSettings = fields(
    carried("Enable"),
    carried("MaxQueues"),
    carried("DefaultQueue"),
    carried("TrafficClass"),
    carried("DefaultPolicer"),
    carried("MaxQueueEntries"),
    carried("DefaultDSCPMark"),
    carried("AvailableAppList"),
    carried("MaxPolicerEntries"),
    carried("DefaultTrafficClass"),
    carried("DefaultForwardingPolicy"),
    carried("MaxClassificationEntries"),
    carried("DefaultEthernetPriorityMark"),
    carried("QueueShapingRateForDirections"));

constexpr auto kDestMask = fields(mask("DestMask"));
constexpr auto kSourceMask = fields(mask("SourceMask"));
// clang-format on

// A mask has its place also where its message does not count, which the engine does not see.
template <auto Cross>
int convert_mask(Fields mask, Key name, json_t* source_class, json_t* converted_class, const Report& report) {
    const int failures = Cross(mask, source_class, converted_class, report);
    report.place(source_class, name);
    return failures;
}

// A copy of the classes with their masks rewritten. Only classes that have a mask are copied themselves.
template <auto Cross>
Json convert_masks(json_t* classification, const Report& report, int& failures) {
    Json converted = shallow_copy(classification);
    for (const auto [name, source_class] : members(classification)) {
        if (!has(source_class, "DestMask") && !has(source_class, "SourceMask")) continue;
        Json converted_class = shallow_copy(source_class);
        failures += convert_mask<Cross>(kDestMask, "DestMask", source_class, converted_class.get(), report);
        failures += convert_mask<Cross>(kSourceMask, "SourceMask", source_class, converted_class.get(), report);
        set(converted.get(), name, std::move(converted_class));
    }
    return converted;
}

// A copy of the policers in which an empty status is the default one.
Json convert_policer(json_t* policer, const Report& report, int& failures) {
    Json converted = shallow_copy(policer);
    failures += cross(ways::string_or<"Enabled">, policer, "PolicesStatus", converted.get(), "PolicesStatus", report);
    return converted;
}

// Counted as it has always been: two members of the classification are taken for bookkeeping, although it has one.
json_int_t count_of_classes(json_t* classification) {
    constexpr size_t kBookkeeping = 2;
    return static_cast<json_int_t>(std::max(json_object_size(classification), kBookkeeping) - kBookkeeping);
}

}  // namespace

int current_generation_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err) {
    const Report report{"convert_new_qos", err};
    int failures = 0;
    carry(new_qos, "Queue", get(old_qos, "Queue"));
    failures += to_new(kSettings, old_qos, new_qos, report);
    set(new_qos, "QosVersion", integer(kCurrentGeneration));
    Json classification = convert_masks<to_new>(get(old_qos, "Classification"), report, failures);
    Json policer = convert_policer(get(old_qos, "Policer"), report, failures);
    set(new_qos, "Classification", std::move(classification));
    set(new_qos, "Policer", std::move(policer));
    return failures;
}

int current_generation_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err) {
    const Report report{"convert_new_qos", err};
    int failures = 0;
    json_t* const queue = get(new_qos, "Queue");
    json_t* const policer = get(new_qos, "Policer");
    failures += to_old(kSettings, new_qos, old_qos, report);
    carry(old_qos, "Queue", queue);
    carry(old_qos, "Policer", policer);
    Json classification = convert_masks<to_old>(get(new_qos, "Classification"), report, failures);
    const json_int_t classes = count_of_classes(classification.get());
    set(old_qos, "Classification", std::move(classification));
    set(old_qos, "QueueNumberOfEntries", integer(getNumberOfEntries(queue)));
    set(old_qos, "PolicerNumberOfEntries", integer(getNumberOfEntries(policer)));
    set(old_qos, "ClassificationNumberOfEntries", integer(classes));
    return failures;
}

}  // namespace kcnvrt
