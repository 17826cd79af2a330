// voice.h: the levels of a voice service, each one field of the level above it.
#pragma once

#include "frame/field.h"

namespace kcnvrt {

// A new object that a table fills from `source` in the direction of `Cross`, which is to_new or to_old.
template <auto Cross>
Json crossed(Fields fields, json_t* source, const Report& report, int& failures) {
    Json result = object();
    failures += Cross(fields, source, result.get(), report);
    return result;
}

namespace ways {

int capabilities_to_new(json_t* service, Key key, json_t* value, const Report& report);
int capabilities_to_old(json_t* service, Key key, json_t* value, const Report& report);

int voice_profiles_to_new(json_t* service, Key key, json_t* value, const Report& report);
int voice_profiles_to_old(json_t* service, Key key, json_t* value, const Report& report);

int lines_to_new(json_t* profile, Key key, json_t* value, const Report& report);
int lines_to_old(json_t* profile, Key key, json_t* value, const Report& report);

}  // namespace ways

inline constexpr Word<ways::capabilities_to_new, ways::capabilities_to_old> capabilities;
inline constexpr Word<ways::voice_profiles_to_new, ways::voice_profiles_to_old> voice_profiles;
inline constexpr Word<ways::lines_to_new, ways::lines_to_old> lines;

}  // namespace kcnvrt
