// unused.h: which values of a document its conversion does not use.
#pragma once

#include "trials/counter_check.h"
#include "trials/leaves.h"

namespace kcnvrt::text {

// Finds what may be taken away, and may say something else, without changing what the document is converted to. What
// is looked at is tried all at once; a group that changes something is halved until it is known which of it does.
class UnusedPieces {
public:
    // `before` is what `source` is converted to. Neither is modified, and both stay.
    UnusedPieces(CounterCheck& check, json_t* source, const Outcome& before)
        : check_{check}, source_{source}, before_{before} {}

    // Looks at these pieces, of which none is inside another, and at all that is inside them. False when memory ends.
    bool find(const GrowingArray<Piece>& pieces);

    // The same, but finds only those of them that are not used at all.
    bool find_whole(const GrowingArray<Piece>& pieces) {
        looks_inside_ = false;
        return find(pieces);
    }

    // The outermost that are not used, with all that is inside them. Their pointers live as long as this.
    const GrowingArray<Piece>& found() const { return found_; }

private:
    // A piece that is perhaps not used, whose leaves are those from `first` on.
    struct Unit {
        Piece piece;
        size_t first;
        size_t last;
    };
    // Units that are tried together.
    struct Group {
        size_t first;
        size_t last;
        unsigned ways;  // that have still to be tried
    };

    bool choose_units(const GrowingArray<Piece>& pieces);
    bool choose_units(const Piece& piece, size_t& leaf, bool& is_used);
    bool choose_units_inside(const Piece& piece, size_t& leaf, bool& is_used);
    Piece child_of(const Piece& piece, size_t leaf, json_t* value) const;
    bool add_groups(unsigned ways);
    bool try_groups();
    bool try_group(Group& group, bool& is_used);
    bool choose_changes(unsigned way, const Group& group, json_t* made, GrowingArray<Change>& changes) const;
    bool divide(const Group& group);
    bool divide(const Unit& unit);

    CounterCheck& check_;
    json_t* source_;
    const Outcome& before_;
    bool looks_inside_ = true;
    Leaves leaves_;
    GrowingArray<Unit> units_;
    GrowingArray<Group> groups_;
    GrowingArray<Piece> found_;
};

}  // namespace kcnvrt::text
