#include "explain/explain.h"

#include <k_cnvrt.h>

#include <cstdio>

#include "explain/member_story.h"
#include "explain/result_sources.h"
#include "json/pointer.h"
#include "messages.h"
#include "places.h"
#include "shown_value.h"
#include "trials/what_passes.h"

namespace kcnvrt::text {

namespace {

constexpr const char* kExplain = "explain";

bool set(json_t* object, const char* name, Json value) {
    return value && json_object_set_new_nocheck(object, name, value.release()) == 0;
}

bool set(json_t* object, const char* name, std::string_view text) {
    return set(object, name, Json(json_stringn_nocheck(text.data(), text.size())));
}

const char* name_of(Fate fate) {
    return fate == Fate::kUsed ? "used" : fate == Fate::kRegenerated ? "regenerated" : "lost";
}

// How much of a pointer leads to something.
std::string_view known_part(json_t* root, std::string_view pointer) {
    std::string_view rest = pointer;
    size_t known = 0;
    for (json_t* value = root; !rest.empty(); known = pointer.size() - rest.size()) {
        value = child_of(value, take_token(rest));
        if (value == nullptr) break;
    }
    return pointer.substr(0, known);
}

// Where a value of the text is in what is left of it, if it is. False when memory ends.
bool find_in_rest(std::string_view pointer, const Part& part, json_t* rest, Buffer& moved, bool& is_left) {
    json_t* value = rest;
    std::string_view tokens = pointer;
    while (value != nullptr && !tokens.empty()) {
        const std::string_view before{pointer.data(), pointer.size() - tokens.size()};
        const std::string_view token = take_token(tokens);
        const std::string_view here{pointer.data(), pointer.size() - tokens.size()};
        size_t gone_before = 0;
        for (const TakenOut& taken : part.taken_out) {
            const std::string_view place = taken.pointer;
            if (place == here) return true;
            const bool is_beside = json_is_array(value) && parent_of(place) == before;
            gone_before += is_beside && index_of(last_token_of(place)) < index_of(token);
        }
        char digits[24];
        const size_t index = index_of(token) - gone_before;
        const int length = std::snprintf(digits, sizeof digits, "%zu", index);
        const std::string_view now = gone_before == 0 ? token : std::string_view(digits, static_cast<size_t>(length));
        if (!moved.append("/") || !moved.append(now)) return false;
        value = child_of(value, now);
    }
    is_left = value != nullptr;
    return true;
}

class Explanation {
public:
    Explanation(const ExplainQuestion& question, CounterCheck& check, k_text_result_t& result)
        : text_{question.text},
          source_{question.root},
          pointer_{question.request.pointer},
          check_{check},
          result_{result} {}

    Json of_member() {
        if (!has_member() || !convert(true)) return nullptr;
        Buffer moved;
        Json answer(json_object());
        bool is_left = false;
        MemberStory story(check_, source_, before_);
        if (!find_in_rest(pointer_, part_, source_, moved, is_left)) return out_of_memory();
        if (is_left && !story.find(moved.view())) return out_of_memory();
        note_rejection();
        const bool is_told = answer && set(answer.get(), "pointer", pointer_) &&
                             set(answer.get(), "answer", name_of(story.fate())) &&
                             set(answer.get(), "effects", effects_of(story));
        return is_told ? std::move(answer) : out_of_memory();
    }

    Json of_result() {
        if (!convert(false)) return nullptr;
        json_t* const value = value_at(before_.tree.get(), pointer_);
        if (value == nullptr) return refuse_place();
        ResultSources sources(check_, source_, before_, pointer_);
        if (!sources.find()) return out_of_memory();
        note_rejection();
        Json answer(json_object());
        const bool is_told = answer && set(answer.get(), "pointer", pointer_) &&
                             set(answer.get(), "value", shown(value, pointer_, "")) &&
                             set(answer.get(), "sources", sources_of(sources));
        return is_told ? std::move(answer) : out_of_memory();
    }

private:
    Json out_of_memory() {
        result_.run_out_of_memory();
        return nullptr;
    }

    // Converts the text, or what can be converted of it.
    bool convert(bool tells_messages) {
        if (!check_.convert(source_, before_) || (!before_.tree && !convert_rest_of_it()))
            return out_of_memory() != nullptr;
        if (!before_.tree && !part_.converted) return reject();
        if (tells_messages) add_near_messages();
        if (tells_messages) add_near_notes();
        if (before_.tree) return result_.status == K_TEXT_CONVERTED;
        result_.record = std::move(before_.record);
        source_ = rest_.get();
        if (!check_.convert(source_, before_)) result_.run_out_of_memory();
        return result_.status == K_TEXT_CONVERTED;
    }

    bool convert_rest_of_it() {
        rest_ = deep_copy(source_);
        return rest_ && convert_rest(check_, check_.way(), rest_.get(), before_.record.get(), result_.texts, part_);
    }

    void note_rejection() {
        if (!rest_) return;
        result_.add({.which = K_TEXT_IN_TEXT,
                     .severity = K_TEXT_NOTE,
                     .pointer = "",
                     .function = kExplain,
                     .message = "the configuration is rejected; this is about what --partial converts of it"});
    }

    bool reject() {
        result_.record = std::move(before_.record);
        add_messages(text_, {source_}, "", result_);
        add_notes(text_, {source_}, part_, result_);
        if (result_.status == K_TEXT_CONVERTED) result_.status = K_TEXT_REJECTED;
        return false;
    }

    // What the conversion says of the member, and of what is inside it.
    void add_near_messages() {
        const k_err_t* const record = before_.record.get();
        for (size_t i = 0; i < k_err_count(record); ++i) {
            const char* const place = k_err_pointer(record, i);
            if (place == nullptr || !is_inside(place, pointer_)) continue;
            const char* const message = message_of(record, i, {source_}, result_.shows_secrets, result_.texts);
            const char* const kept = message == nullptr ? nullptr : result_.texts.keep(message);
            const char* const pointer = result_.texts.keep(place);
            const char* const function = result_.texts.keep(k_err_function(record, i));
            if (kept == nullptr || pointer == nullptr || function == nullptr) return result_.run_out_of_memory();
            const bool is_counted = k_err_is_counted(record, i) != 0;
            result_.add({.which = K_TEXT_IN_TEXT,
                         .severity = is_counted ? K_TEXT_ERROR : K_TEXT_WARNING,
                         .pointer = pointer,
                         .function = function,
                         .message = kept});
        }
    }

    // What was taken out of the member, or has it inside.
    void add_near_notes() {
        for (const TakenOut& taken : part_.taken_out) {
            if (!is_inside(taken.pointer, pointer_) && !is_inside(pointer_, taken.pointer)) continue;
            result_.add({.which = K_TEXT_IN_TEXT,
                         .severity = K_TEXT_NOTE,
                         .pointer = taken.pointer,
                         .function = "partial",
                         .message = "left out of the partial result"});
        }
    }

    bool has_member() {
        if (value_at(source_, pointer_) != nullptr) return true;
        const std::string_view known = known_part(source_, pointer_);
        const bool is_text = json_is_string(value_at(source_, known));
        const char* const place = result_.texts.keep(known);
        if (place == nullptr) return out_of_memory() != nullptr;
        result_.fail(K_TEXT_WRONG_USAGE,
                     {.which = K_TEXT_IN_TEXT,
                      .pointer = place,
                      .function = kExplain,
                      .message = is_text ? "the pointer leads into a text, which has no members; ask about the text"
                                         : "the pointer leads to nothing; this is as far as it goes"});
        return false;
    }

    Json refuse_place() {
        Buffer words;
        const std::string_view known = known_part(before_.tree.get(), pointer_);
        const bool is_written = words.append("the pointer leads to nothing in the result; it goes as far as \"") &&
                                words.append(known) && words.append("\"");
        const char* const message = is_written ? result_.texts.keep(words.view()) : nullptr;
        if (message == nullptr) return out_of_memory();
        result_.fail(K_TEXT_WRONG_USAGE, {.function = kExplain, .message = message});
        return nullptr;
    }

    // A value that is there; null, the JSON value, for none. Masked as the place of it and what it depends on demand.
    Json shown(const json_t* value, std::string_view pointer, std::string_view other_pointer) const {
        if (value == nullptr) return Json(json_null());
        if (result_.shows_secrets) return share(const_cast<json_t*>(value));
        return masked_copy(value, leads_to_secret(pointer) || leads_to_secret(other_pointer));
    }

    Json effects_of(const MemberStory& story) const {
        Json effects(json_array());
        for (const char* place : story.effects()) {
            Json effect(json_object());
            const bool is_told =
                effects && effect && set(effect.get(), "pointer", place) &&
                set(effect.get(), "with", shown(value_at(before_.tree.get(), place), place, pointer_)) &&
                set(effect.get(), "without", shown(story.without(place), place, pointer_)) &&
                json_array_append_new(effects.get(), effect.release()) == 0;
            if (!is_told) return nullptr;
        }
        return effects;
    }

    Json sources_of(const ResultSources& sources) const {
        Json list(json_array());
        for (const ResultSource& source : sources.found()) {
            Buffer first;
            if (!list || !part_.origins.append_first_pointer(source_, source.pointer, first)) return nullptr;
            Json told(json_object());
            const json_t* const value = value_at(source_, source.pointer);
            const bool is_told = told && set(told.get(), "pointer", first.view()) &&
                                 set(told.get(), "value", shown(value, source.pointer, pointer_)) &&
                                 set(told.get(), "without", without(source)) &&
                                 json_array_append_new(list.get(), told.release()) == 0;
            if (!is_told) return nullptr;
        }
        return list;
    }

    Json without(const ResultSource& source) const {
        if (source.without == nullptr) return Json(json_null());
        const Json value(json_loads(source.without, JSON_DECODE_ANY | JSON_ALLOW_NUL, nullptr));
        return value == nullptr ? nullptr : shown(value.get(), pointer_, source.pointer);
    }

    const Source& text_;
    json_t* source_;
    const char* pointer_;
    CounterCheck& check_;
    k_text_result_t& result_;
    Outcome before_;
    Part part_;
    Json rest_;  // of a text that is rejected
};

}  // namespace

Json explain(const ExplainQuestion& question, k_text_result_t& result) {
    const k_text_request_t& request = question.request;
    const uint8_t flags = (request.flags & K_TEXT_DSL_VLAN) != 0 ? K_CNVRT_DSL_VLAN : 0;
    CounterCheck check({request.operation == K_TEXT_TO_NEW, nullptr, flags}, result.tree_memory);
    Explanation explanation(question, check, result);
    Json answer = (request.flags & K_TEXT_FROM_RESULT) != 0 ? explanation.of_result() : explanation.of_member();
    find_places(question.text, result);
    if (result.status != K_TEXT_CONVERTED) return nullptr;
    return answer;
}

}  // namespace kcnvrt::text
