// member_story.h: what becomes of one member of a document.
#pragma once

#include "trials/effects.h"
#include "trials/leaves.h"
#include "trials/what_passes.h"

namespace kcnvrt::text {

enum class Fate : uint8_t {
    kUsed,         // the result depends on it, or on what it says
    kRegenerated,  // it does not, and the way back makes such a member all the same
    kLost,
};

class MemberStory {
public:
    // `before` is what `source` is converted to. Neither is modified, and both stay.
    MemberStory(CounterCheck& check, json_t* source, const Outcome& before)
        : check_{check}, source_{source}, before_{before} {}

    // Of a member that is there. False when memory ends.
    bool find(std::string_view pointer);

    Fate fate() const { return fate_; }
    // The places in the result that depend on it.
    const GrowingArray<const char*>& effects() const { return effects_; }
    // What stands there without the member, borrowed; null for nothing.
    json_t* without(const char* effect) const;

private:
    bool take_away(std::string_view pointer);
    bool change(std::string_view pointer);
    bool change_to(const Leaves& leaves, size_t variant, bool& is_changed);
    bool add_effects(json_t* after, bool must_be_there);
    bool is_tired() const;
    bool go_back(std::string_view pointer);

    CounterCheck& check_;
    json_t* source_;
    const Outcome& before_;
    Outcome without_;
    KeptTexts texts_;
    GrowingArray<const char*> effects_;
    bool is_reported_ = false;
    Fate fate_ = Fate::kLost;
};

}  // namespace kcnvrt::text
