// comparison.h: what of a document comes back otherwise.
#pragma once

#include "basis/buffer.h"
#include "losses/list_matching.h"
#include "owned.h"
#include "result.h"

namespace kcnvrt::text {

// One place where a document differs from what came back.
struct Difference {
    uint32_t kind;        // K_TEXT_DROPPED: nothing came back; K_TEXT_CHANGED, K_TEXT_DEFAULTED, K_TEXT_RENUMBERED
    const char* pointer;  // into the document; of what was added the object or array there that has got it
    json_t* before;       // borrowed; null where nothing was
    json_t* after;        // borrowed; of what was added an object with the members, or an array with the elements
};

// Compares two trees, which have to stay.
class Comparison {
public:
    Comparison() : made_{json_array()} {}

    // False when memory ends. Once more it begins anew.
    bool run(json_t* before, json_t* after) {
        differences_.cut(0);
        return made_ && compare(before, after);
    }

    // No entry of the list there has moved, however much it looks like another one.
    bool keep_order(std::string_view pointer) {
        const char* const kept = pointers_.keep(pointer);
        return kept != nullptr && ordered_.add({kept, pointer.size()});
    }

    const GrowingArray<Difference>& differences() const { return differences_; }

private:
    bool compare(json_t* before, json_t* after);
    bool compare_containers(json_t* before, json_t* after);
    // What has no counterpart before goes to `added`.
    bool compare_members(json_t* before, json_t* after, json_t* added);
    bool compare_entries(json_t* before, json_t* after, json_t* added);
    bool compare_entry(const Entry& before, const Entry& after);
    // The same with one more token for the time.
    bool compare_at(std::string_view token, json_t* before, json_t* after);
    bool may_move() const;
    bool report(uint32_t kind, json_t* before, json_t* after);
    bool report_renumbered(uint64_t before, uint64_t after);
    json_t* keep(Json value);

    Buffer path_;
    KeptTexts pointers_;
    Json made_;
    GrowingArray<Difference> differences_;
    GrowingArray<std::string_view> ordered_;
};

}  // namespace kcnvrt::text
