// What a voice service can do: the same in both layouts but for the two lists of names in "SIP", one text with commas
// in the old layout and a numbered list in the new.
#include <cstring>

#include "frame/growing_text.h"
#include "frame/list.h"
#include "k_cnvrt.h"
#include "voip/voice.h"

namespace kcnvrt::ways {

namespace {

int string_to_multiinstance(json_t* sip, Key key, json_t* value, const Report&) {
    if (json_is_string(value)) set(sip, key, list_of_pieces(view_of(value), ','));
    return 0;
}

int multiinstance_to_string(json_t* sip, Key key, json_t* value, const Report& report) {
    return multiinstanse_to_string(sip, key.text(), value, report.err());
}

constexpr Word<string_to_multiinstance, multiinstance_to_string> names;

// A member of another type stays in the copy as it was.
// clang-format off
constexpr auto kSip = fields(
    names("Extensions"),
    names("Transports"));
// clang-format on

template <auto Cross>
int convert_capabilities(json_t* service, Key key, json_t* value, const Report& report) {
    Json converted = shallow_copy(value);
    json_t* const source_sip = get(value, "SIP");
    Json sip = shallow_copy(source_sip);
    const int failures = Cross(kSip, source_sip, sip.get(), report);
    set(converted.get(), "SIP", std::move(sip));
    set(service, key, std::move(converted));
    return failures;
}

}  // namespace

int capabilities_to_new(json_t* service, Key key, json_t* value, const Report& report) {
    return convert_capabilities<to_new>(service, key, value, report);
}

int capabilities_to_old(json_t* service, Key key, json_t* value, const Report& report) {
    return convert_capabilities<to_old>(service, key, value, report);
}

}  // namespace kcnvrt::ways

using namespace kcnvrt;

// Callers link against this spelling.
int multiinstanse_to_string(json_t* destination, const char* key, json_t* list, k_err_t* err) {
    if (key == nullptr || list == nullptr) return 0;
    if (!json_is_object(list)) return Report{__func__, err}.fail("Error field \"%s\", is not object", key);
    const GrowingText names{string_init(0)};
    const char* separator = "";
    for (const auto [number, name] : Instances{list}) {
        if (!json_is_string(name)) continue;
        string_add(names.get(), separator);
        string_add(names.get(), text_of(name));
        separator = ",";
    }
    if (names != nullptr) set(destination, {key, std::strlen(key)}, string(names->text));
    return 0;
}
