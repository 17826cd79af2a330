#include "subject.h"

#include "section_source.h"

namespace kcnvrt::text {

namespace {

constexpr const char* kLayout = "layout";

uint32_t opposite(uint32_t direction) {
    return direction == K_TEXT_TO_NEW ? K_TEXT_TO_OLD : K_TEXT_TO_NEW;
}

// The new layout has no section of which the old layout's sections would have two names, or an object "Device".
bool is_whole_of_any(const json_t* text) {
    return is_whole_configuration(K_TEXT_TO_NEW, text) || is_whole_configuration(K_TEXT_TO_OLD, text);
}

const char* wrong_text(uint32_t direction) {
    return direction == K_TEXT_TO_NEW ? "this is a whole configuration in the new layout; --to-old takes a section out "
                                        "of it, --as-is takes it "
                                        "for one"
                                      : "this is a whole configuration in the old layout; --to-new takes a section out "
                                        "of it, --as-is takes it "
                                        "for one";
}

void refuse(uint32_t which, const char* message, k_text_result_t& result) {
    result.fail(K_TEXT_WRONG_LAYOUT, {.which = which, .pointer = "", .function = kLayout, .message = message});
}

void refuse_wrong_layout(uint32_t direction, const json_t* text, const json_t* base, k_text_result_t& result) {
    if (is_whole_configuration(opposite(direction), text)) refuse(K_TEXT_IN_TEXT, wrong_text(direction), result);
    if (is_whole_of_any(base))
        refuse(K_TEXT_IN_OTHER, "the base is a whole configuration, and not the section; --force takes it for one",
               result);
}

// What a request for a section comes to, of which the configuration has no source.
void reject(const Buffer& place, k_text_result_t& result) {
    Buffer words;
    const bool is_written = words.append("the configuration has no ") && words.append(place.view());
    const char* const message = is_written ? result.texts.keep(words.view()) : nullptr;
    if (message == nullptr) return result.run_out_of_memory();
    result.fail(K_TEXT_REJECTED, {.which = K_TEXT_IN_TEXT, .pointer = "", .function = kLayout, .message = message});
}

}  // namespace

bool pointer_in_text(const Subject& subject, const char* pointer, KeptTexts& texts, const char*& in_text) {
    in_text = pointer;
    if (pointer == nullptr || *subject.place == '\0') return true;
    Buffer whole;
    in_text = whole.append(subject.place) && whole.append(pointer) ? texts.keep(whole.view()) : nullptr;
    return in_text != nullptr;
}

Subject take_out_section(const k_text_request_t& request, uint32_t direction, json_t* text, const json_t* base,
                         k_text_result_t& result) {
    const Subject whole = {text};
    if ((request.flags & K_TEXT_AS_IS) != 0) return whole;
    if ((request.flags & K_TEXT_FORCE) == 0) refuse_wrong_layout(direction, text, base, result);
    if (result.status != K_TEXT_CONVERTED || !is_whole_configuration(direction, text)) return whole;
    if (!is_section(direction, request.section)) return whole;

    Buffer place;
    SectionSource source;
    const char* kept = nullptr;
    if (find_section_source(direction, request.section, text, place, source)) kept = result.texts.keep(place.view());
    if (kept == nullptr) {
        result.run_out_of_memory();
        return whole;
    }
    if (source.is_all) return whole;
    if (source.value == nullptr) {
        reject(place, result);
        return whole;
    }
    result.add({.which = K_TEXT_IN_TEXT,
                .severity = K_TEXT_NOTE,
                .pointer = kept,
                .function = kLayout,
                .message = "this section is taken out of the whole configuration; --as-is takes that for the section"});
    return {source.value, kept};
}

}  // namespace kcnvrt::text
