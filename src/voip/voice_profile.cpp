// The profiles of a voice service: what its lines have in common, and the lines themselves.
#include "frame/list.h"
#include "k_cnvrt.h"
#include "voip/voice.h"

namespace kcnvrt::ways {

namespace {

// The new layout does without the counters of a tone.
int tone_to_new(json_t* profile, Key key, json_t* value, const Report&) {
    Json tone = shallow_copy(value);
    for (const char* counter : {"DescriptionNumberOfEntries", "EventNumberOfEntries", "PatternNumberOfEntries"})
        json_object_del(tone.get(), counter);
    set(profile, key, std::move(tone));
    return 0;
}

void set_count(json_t* tone, Key counter, json_t* entries) {
    set(tone, counter, integer(getNumberOfEntries(entries)));
}

// Two of the three counters come back. That of the patterns has never been written.
int tone_to_old(json_t* profile, Key key, json_t* value, const Report&) {
    Json tone = shallow_copy(value);
    set_count(tone.get(), "EventNumberOfEntries", get(value, "Event"));
    set_count(tone.get(), "DescriptionNumberOfEntries", get(value, "Description"));
    set(profile, key, std::move(tone));
    return 0;
}

constexpr Word<tone_to_new, tone_to_old> tone;

// clang-format off
constexpr auto kVoiceProfile = fields(
    carried           ("RTP"),
    carried           ("SIP"),
    carried           ("FaxT38"),
    carried           ("NumberingPlan"),
    tone              ("Tone"),
    carried           ("X_KAVRO_DSP"),
    carried           ("X_KAVRO_VLAN"),
    carried           ("X_KAVRO_V152"),
    carried           ("X_KAVRO_Bandwidth"),
    lines             ("Line"),
    text_or<"Enabled">("Enable"),
    carried           ("Region"),
    carried           ("KeepAlive"),
    carried           ("STUNServer"),
    carried           ("STUNEnable"),
    carried           ("DTMFMethod"),
    carried           ("MaxSessions"),
    carried           ("InternalCall"),
    carried           ("NumberOfLines"),
    carried           ("X_KAVRO_Realm"),
    carried           ("X_KAVRO_AutoDial"),
    carried           ("X_KAVRO_STUNPort"),
    carried           ("SignalingProtocol"),
    carried           ("X_KAVRO_IP_filter"),
    carried           ("X_KAVRO_UseDomain"),
    carried           ("X_KAVRO_HWNatEnable"),
    carried           ("X_KAVRO_FlashHookType"),
    carried           ("X_KAVRO_Pulse_Dial_Gen"),
    carried           ("X_KAVRO_FunctionKeyPSTN"),
    carried           ("X_KAVRO_SIPInfoDuration"),
    carried           ("X_KAVRO_BoundInterfaceName"),
    carried           ("X_KAVRO_FunctionKeyTransfer"),
    carried           ("X_KAVRO_CallerIDDetectionMode"),
    carried           ("X_KAVRO_CallerIDAutoDetection"),
    carried           ("X_KAVRO_CallerIDAutoDetectionNTT"));
// clang-format on

template <auto Cross>
int convert_profiles(json_t* service, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    const Report author = report.under("convert_voice_profile");
    Json profiles = object();
    int failures = 0;
    for (const auto [name, profile] : members(value))
        if (json_is_object(profile))
            set(profiles.get(), name, crossed<Cross>(kVoiceProfile, profile, author, failures));
    carry_max_instance(profiles.get(), value);
    set(service, key, std::move(profiles));
    return failures;
}

}  // namespace

int voice_profiles_to_new(json_t* service, Key key, json_t* value, const Report& report) {
    return convert_profiles<to_new>(service, key, value, report);
}

int voice_profiles_to_old(json_t* service, Key key, json_t* value, const Report& report) {
    const int failures = convert_profiles<to_old>(service, key, value, report);
    if (json_t* const profiles = get(service, key))
        set(service, "VoiceProfileNumberOfEntries", integer(getNumberOfEntries(profiles)));
    return failures;
}

}  // namespace kcnvrt::ways
