// The lines of a voice profile.
#include "frame/list.h"
#include "voip/voice.h"

namespace kcnvrt::ways {

namespace {

// clang-format off
constexpr auto kCallOffHook = fields(
    password("X_KAVRO_CallOffHookPassword"));
// clang-format on

// A copy in which one password is converted. A password that does not convert stays as it was.
template <auto Cross>
int convert_calling_features(json_t* line, Key key, json_t* value, const Report& report) {
    Json features = shallow_copy(value);
    const int failures = Cross(kCallOffHook, value, features.get(), report);
    set(line, key, std::move(features));
    return failures;
}

// clang-format off
constexpr auto kLineSip = fields(
    carried ("AuthUserName"),
    carried ("X_KAVRO_LoginID"),
    carried ("X_KAVRO_DisplayName"),
    carried ("X_KAVRO_Registration"),
    password("AuthPassword"));
// clang-format on

template <auto Cross>
int convert_sip(json_t* line, Key key, json_t* value, const Report& report) {
    int failures = 0;
    if (value != nullptr) set(line, key, crossed<Cross>(kLineSip, value, report, failures));
    return failures;
}

constexpr Word<convert_calling_features<to_new>, convert_calling_features<to_old>> calling_features;
constexpr Word<convert_sip<to_new>, convert_sip<to_old>> sip;

// clang-format off
constexpr auto kLine = fields(
    calling_features("CallingFeatures"),
    carried         ("Codec"),
    carried         ("Enable"),
    carried         ("Status"),
    carried         ("VoiceProcessing"),
    carried         ("X_KAVRO_Alarm"),
    carried         ("X_KAVRO_VoiceQOS"),
    carried         ("X_KAVRO_SpeedDial"),
    carried         ("X_KAVRO_AbbreviatedDial"),
    carried         ("X_KAVRO_PSTNRoutingPrefix"),
    sip             ("SIP"));
// clang-format on

// Towards the new layout a line is an object. Towards the old one every member is a line: one that is no object becomes
// a line without settings.
constexpr bool is_line(json_t* member, bool towards_new) {
    return !towards_new || json_is_object(member);
}

template <auto Cross>
int convert_lines(json_t* profile, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    const Report author = report.under("convert_line");
    Json lines = object();
    int failures = 0;
    for (const auto [name, line] : members(value))
        if (is_line(line, Cross == to_new)) set(lines.get(), name, crossed<Cross>(kLine, line, author, failures));
    // Last: towards the old layout "max_instance" has become a line, too, which it replaces.
    carry_max_instance(lines.get(), value);
    set(profile, key, std::move(lines));
    return failures;
}

}  // namespace

int lines_to_new(json_t* profile, Key key, json_t* value, const Report& report) {
    return convert_lines<to_new>(profile, key, value, report);
}

int lines_to_old(json_t* profile, Key key, json_t* value, const Report& report) {
    return convert_lines<to_old>(profile, key, value, report);
}

}  // namespace kcnvrt::ways
