// Quality of service comes in two generations. The old layout tells them apart by their members, the new one by
// "QosVersion".
#include "qos/qos.h"

#include "k_cnvrt.h"
#include "k_cnvrt/qos.h"

using namespace kcnvrt;

namespace {

int legacy_generation_to_new(json_t* old_qos, json_t* new_qos, k_err_t* err) {
    carry(new_qos, "Enable", get(old_qos, "enable"));
    int failures = links_to_new(old_qos, new_qos, err);
    failures += filters_to_new(old_qos, new_qos, err);
    set(new_qos, "QosVersion", integer(kLegacyGeneration));
    return failures;
}

int legacy_generation_to_old(json_t* new_qos, json_t* old_qos, k_err_t* err) {
    carry(old_qos, "enable", get(new_qos, "Enable"));
    int failures = links_to_old(new_qos, old_qos, err);
    failures += filters_to_old(new_qos, old_qos, err);
    return failures;
}

}  // namespace

int k_cnvrt_get_qos_from_old(json_t* source, json_t* destination, k_err_t* err) {
    if (has(source, "Queue")) return current_generation_to_new(source, destination, err);
    if (has(source, "links")) return legacy_generation_to_new(source, destination, err);
    return Report{__func__, err}.fail("Error version QoS!");
}

int k_cnvrt_get_qos_from_new(json_t* source, json_t* destination, k_err_t* err) {
    const json_int_t version = json_integer_value(get(source, "QosVersion"));
    if (version == kLegacyGeneration) return legacy_generation_to_old(source, destination, err);
    if (version == kCurrentGeneration) return current_generation_to_old(source, destination, err);
    return Report{__func__, err}.fail_at(source, "QosVersion", "Error version QoS!");
}
