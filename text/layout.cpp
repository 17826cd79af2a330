#include "layout.h"

namespace kcnvrt::text {

namespace {

// The one object that only the new layout has. A "Device" of another type is no section of either.
bool has_device(const json_t* configuration) {
    return json_is_object(json_object_get(configuration, "Device"));
}

// Of nothing at all either layout can be said.
bool may_be_new(const json_t* configuration) {
    return has_device(configuration) || json_object_size(configuration) == 0;
}

// A member that is null is there, too.
bool has(const json_t* configuration, const char* name) {
    return json_object_get(configuration, name) != nullptr;
}

bool ties_vlans_to_services(const json_t* old_configuration) {
    return has(old_configuration, "groups") && !has(old_configuration, "vlan");
}

bool ties_vlans_to_ports(const json_t* old_configuration) {
    return has(old_configuration, "vlan") && !has(old_configuration, "groups");
}

struct Refusal {
    const char* pointer;
    const char* message;
};

constexpr Refusal kNone = {nullptr, nullptr};

// The words are those of the tool, which are near those of every other caller.
Refusal refusal_towards_new(const json_t* text, uint32_t flags) {
    if (has_device(text))
        return {"/Device", "the configuration is in the new layout already; to-old converts it, or to-new --force"};
    const bool is_dsl = (flags & K_TEXT_DSL_VLAN) != 0;
    if (!is_dsl && ties_vlans_to_services(text))
        return {"/groups",
                "the device ties its VLANs to DSL services; --dsl-vlan converts them, --force leaves them out"};
    if (is_dsl && ties_vlans_to_ports(text))
        return {"/vlan", "the device has no DSL VLANs; without --dsl-vlan they are converted, --force leaves them out"};
    return kNone;
}

Refusal refusal_towards_old(const json_t* text) {
    if (may_be_new(text)) return kNone;
    return {"",
            "the configuration is not in the new layout, it has no object \"Device\"; to-new converts it, or to-old "
            "--force"};
}

// A difference to it would take out all that it has.
Refusal refusal_of_base(const json_t* base) {
    if (may_be_new(base)) return kNone;
    return {"",
            "the base is not in the new layout, it has no object \"Device\"; to-new makes one of it, or --force takes "
            "it as it is"};
}

void refuse(uint32_t which, const Refusal& refusal, k_text_result_t& result) {
    if (refusal.message == nullptr) return;
    result.fail(K_TEXT_WRONG_LAYOUT,
                {.which = which, .pointer = refusal.pointer, .function = "layout", .message = refusal.message});
}

}  // namespace

uint32_t direction_of(uint32_t flags, const json_t* configuration) {
    if ((flags & K_TEXT_TOWARDS_NEW) != 0) return K_TEXT_TO_NEW;
    if ((flags & K_TEXT_TOWARDS_OLD) != 0) return K_TEXT_TO_OLD;
    return has_device(configuration) ? K_TEXT_TO_OLD : K_TEXT_TO_NEW;
}

uint32_t with_dsl_flag(uint32_t flags, const json_t* configuration) {
    return ties_vlans_to_services(configuration) ? flags | K_TEXT_DSL_VLAN : flags;
}

void refuse_wrong_layout(const Whole& whole, k_text_result_t& result) {
    if ((whole.flags & K_TEXT_FORCE) != 0) return;
    const bool is_towards_new = whole.direction == K_TEXT_TO_NEW;
    refuse(K_TEXT_IN_TEXT,
           is_towards_new ? refusal_towards_new(whole.text, whole.flags) : refusal_towards_old(whole.text), result);
    if (whole.base != nullptr) refuse(K_TEXT_IN_OTHER, refusal_of_base(whole.base), result);
}

}  // namespace kcnvrt::text
