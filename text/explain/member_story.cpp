// Three questions, each asked when the one before it has no answer: what is different without the member, what when it
// says something else, and whether the way back makes it again.
#include "explain/member_story.h"

#include "json/pointer.h"
#include "trials/variants.h"

namespace kcnvrt::text {

namespace {

// A large member with other values may be rejected for one reason after the other, each of which takes a conversion.
constexpr size_t kMostConversions = 200;

}  // namespace

bool MemberStory::find(std::string_view pointer) {
    if (!take_away(pointer)) return false;
    if (effects_.is_empty() && !change(pointer)) return false;
    if (!effects_.is_empty()) fate_ = Fate::kUsed;
    return fate_ == Fate::kUsed || go_back(pointer);
}

json_t* MemberStory::without(const char* effect) const {
    return value_at(without_.tree.get(), effect);
}

bool MemberStory::take_away(std::string_view pointer) {
    GrowingArray<Change> changes;
    if (!pointer.empty() && !changes.add({pointer, nullptr})) return false;
    const Json rest = pointer.empty() ? Json(json_object()) : changed_copy(source_, changes);
    if (!rest || !convert_what_passes(check_, check_.way(), rest.get(), without_)) return false;
    if (!add_effects(without_.tree.get(), false)) return false;
    is_reported_ = !is_same(before_, without_);
    return true;
}

// A member may say just what the conversion would put there without it.
bool MemberStory::change(std::string_view pointer) {
    Leaves leaves;
    if (!leaves.add({pointer, value_at(source_, pointer)})) return false;
    bool is_read = false;
    for (size_t variant = 0; variant < kVariants && effects_.is_empty() && !is_tired(); ++variant) {
        bool is_changed = false;
        if (!change_to(leaves, variant, is_changed)) return false;
        is_read = is_read || is_changed;
    }
    // What is complained of as it is has been left out; what is only then is known to be read.
    if (is_read && !is_reported_) fate_ = Fate::kUsed;
    return true;
}

bool MemberStory::change_to(const Leaves& leaves, size_t variant, bool& is_changed) {
    const ForAWhile for_a_while(check_.memory());
    const Json made(json_array());
    GrowingArray<Change> changes;
    if (!made || !change_leaves(source_, leaves, 0, leaves.size(), variant, made.get(), changes)) return false;
    if (changes.is_empty()) return true;
    const Json copy = changed_copy(source_, changes);
    Outcome after;
    if (!copy || !convert_what_passes(check_, check_.way(), copy.get(), after)) return false;
    if (!add_effects(after.tree.get(), true)) return false;
    is_changed = !is_same(before_, after);
    return true;
}

bool MemberStory::is_tired() const {
    return check_.conversions() >= kMostConversions;
}

// Of a member that says something else, only what is there as it is.
bool MemberStory::add_effects(json_t* after, bool must_be_there) {
    Effects effects;
    if (!effects.find(before_.tree.get(), after)) return false;
    for (const char* place : effects.pointers()) {
        if (must_be_there && value_at(before_.tree.get(), place) == nullptr) continue;
        const char* const kept = texts_.keep(place);
        if (kept == nullptr || !effects_.add(kept)) return false;
    }
    return true;
}

bool MemberStory::go_back(std::string_view pointer) {
    const ForAWhile for_a_while(check_.memory());
    Outcome back;
    if (!convert_what_passes(check_, check_.way().back(), before_.tree.get(), back)) return false;
    if (value_at(back.tree.get(), pointer) != nullptr) fate_ = Fate::kRegenerated;
    return true;
}

}  // namespace kcnvrt::text
