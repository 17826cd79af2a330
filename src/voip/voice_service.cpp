// The voice services.
#include "frame/list.h"
#include "k_cnvrt.h"
#include "k_cnvrt/voip.h"
#include "voip/voice.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kVoiceService = fields(
    capabilities  ("Capabilities"),
    voice_profiles("VoiceProfile"));
// clang-format on

template <auto Cross>
int convert_services(json_t* source, json_t* destination, const Report& report) {
    if (source == nullptr) return 0;
    json_t* const services = get(source, "VoiceService");
    Json converted = object();
    int failures = 0;
    for (const auto [number, service] : Instances{services})
        set(converted.get(), Decimal{number}, crossed<Cross>(kVoiceService, service, report, failures));
    carry_max_instance(converted.get(), services);
    set(destination, "VoiceService", std::move(converted));
    return failures;
}

}  // namespace

int k_cnvrt_get_voip_from_old(json_t* source, json_t* destination, k_err_t* err) {
    return convert_services<to_new>(source, destination, Report{__func__, err});
}

int k_cnvrt_get_voip_from_new(json_t* source, json_t* destination, k_err_t* err) {
    return convert_services<to_old>(source, destination, Report{__func__, err});
}
