#include "losses/unused.h"

#include <algorithm>

#include "json/pointer.h"
#include "trials/other_value.h"
#include "trials/traces.h"

namespace kcnvrt::text {

namespace {

// The ways of finding out whether something is used.
constexpr unsigned kTakeAway = 1;    // whole units
constexpr unsigned kOtherKind = 2;   // every leaf says something that it cannot mean
constexpr unsigned kOtherValue = 4;  // every leaf says something else that it could mean as well
constexpr unsigned kAllWays = kTakeAway | kOtherKind | kOtherValue;

// Beyond so many conversions what is not known yet counts as used: hostile documents could ask for any number.
constexpr size_t kMostConversions = 1000;

// The count of a list says nothing that the list does not, and goes with it.
bool is_count(const Piece& piece) {
    return json_is_integer(piece.value) && last_token_of(piece.pointer) == "max_instance";
}

bool keep(Json value, json_t* made, GrowingArray<Change>& changes, std::string_view pointer) {
    return value && changes.add({pointer, value.get()}) && json_array_append_new(made, value.release()) == 0;
}

}  // namespace

bool UnusedPieces::find(const GrowingArray<Piece>& pieces) {
    for (const Piece& piece : pieces)
        if (!leaves_.add(piece)) return false;
    if (leaves_.size() == 0) return true;
    bool are_traces_harmless = false;
    const bool has_memory = leaves_.sort() && mark_by_traces(check_, source_, before_, leaves_, are_traces_harmless) &&
                            choose_units(pieces);
    if (!has_memory || units_.is_empty()) return has_memory;
    const unsigned ways = are_traces_harmless ? kAllWays & ~kOtherKind : kAllWays;
    return add_groups(ways) && try_groups();
}

// A few pieces that are mostly used are tried one by one.
bool UnusedPieces::add_groups(unsigned ways) {
    constexpr size_t kFew = 8;
    if (looks_inside_ || units_.size() > kFew) return groups_.add({0, units_.size(), ways});
    for (size_t i = units_.size(); i-- != 0;)
        if (!groups_.add({i, i + 1, ways})) return false;
    return true;
}

// The outermost pieces without a leaf that is used.
bool UnusedPieces::choose_units(const GrowingArray<Piece>& pieces) {
    size_t leaf = 0;
    for (const Piece& piece : pieces) {
        const size_t first = leaf;
        bool is_used = false;
        const size_t units = units_.size();
        if (!choose_units(piece, leaf, is_used)) return false;
        if (!looks_inside_) units_.cut(units);
        if (!is_used && !units_.add({piece, first, leaf})) return false;
    }
    return true;
}

bool UnusedPieces::choose_units(const Piece& piece, size_t& leaf, bool& is_used) {
    if (is_leaf(piece.value)) {
        is_used = leaves_[leaf++].is_used;
        return true;
    }
    const size_t units = units_.size();
    if (!choose_units_inside(piece, leaf, is_used)) return false;
    if (!is_used) units_.cut(units);
    return true;
}

bool UnusedPieces::choose_units_inside(const Piece& piece, size_t& leaf, bool& is_used) {
    const auto choose = [&](json_t* value) {
        const size_t first = leaf;
        const Piece child = child_of(piece, leaf, value);
        bool is_child_used = false;
        if (!choose_units(child, leaf, is_child_used)) return false;
        is_used = is_used || is_child_used;
        return is_child_used || is_count(child) || units_.add({child, first, leaf});
    };
    const char* name;
    json_t* value;
    json_object_foreach(piece.value, name, value) {
        if (!choose(value)) return false;
    }
    size_t index;
    json_array_foreach(piece.value, index, value) {
        if (!choose(value)) return false;
    }
    return true;
}

// The child in which that leaf is.
Piece UnusedPieces::child_of(const Piece& piece, size_t leaf, json_t* value) const {
    const std::string_view pointer = leaves_[leaf].pointer;
    const size_t end = pointer.find('/', piece.pointer.size() + 1);
    return {{pointer.data(), std::min(end, pointer.size())}, value};
}

bool UnusedPieces::try_groups() {
    while (!groups_.is_empty()) {
        Group group = groups_[groups_.size() - 1];
        groups_.cut(groups_.size() - 1);
        bool is_used = false;
        if (!try_group(group, is_used)) return false;
        if (is_used && !divide(group)) return false;
        if (is_used) continue;
        for (size_t i = group.first; i < group.last; ++i)
            if (!found_.add(units_[i].piece)) return false;
    }
    return true;
}

// Leaves in the group the ways that have to be tried in its halves.
bool UnusedPieces::try_group(Group& group, bool& is_used) {
    for (const unsigned way : {kTakeAway, kOtherKind, kOtherValue}) {
        if ((group.ways & way) == 0) continue;
        if (check_.conversions() >= kMostConversions) {
            is_used = true;
            return true;
        }
        const ForAWhile for_a_while(check_.memory());
        const Json made(json_array());
        GrowingArray<Change> changes;
        if (!made || !choose_changes(way, group, made.get(), changes)) return false;
        if (!changes.is_empty() && !check_.convert_changed(source_, changes, before_, is_used)) return false;
        if (is_used) return true;
        group.ways &= ~way;
    }
    return true;
}

bool UnusedPieces::choose_changes(unsigned way, const Group& group, json_t* made, GrowingArray<Change>& changes) const {
    for (size_t i = group.first; i < group.last; ++i) {
        const Unit& unit = units_[i];
        if (way == kTakeAway && !changes.add({unit.piece.pointer, nullptr})) return false;
        if (way == kTakeAway) continue;
        for (size_t leaf = unit.first; leaf < unit.last; ++leaf) {
            const json_t* const value = leaves_[leaf].value;
            if (way == kOtherValue && !has_other_value(value)) continue;
            Json other = way == kOtherKind ? trace_of(value, leaf) : other_value(value);
            if (!keep(std::move(other), made, changes, leaves_[leaf].pointer)) return false;
        }
    }
    return true;
}

bool UnusedPieces::divide(const Group& group) {
    if (check_.conversions() >= kMostConversions) return true;
    if (group.last - group.first == 1) return divide(units_[group.first]);
    const size_t middle = group.first + (group.last - group.first) / 2;
    // What comes first is tried first.
    return groups_.add({middle, group.last, group.ways}) && groups_.add({group.first, middle, group.ways});
}

// It is used: what is inside it may not be.
bool UnusedPieces::divide(const Unit& unit) {
    const Unit used = unit;
    if (!looks_inside_ || is_leaf(used.piece.value)) return true;
    const size_t first = units_.size();
    size_t leaf = used.first;
    bool is_used = false;
    return choose_units_inside(used.piece, leaf, is_used) && groups_.add({first, units_.size(), kAllWays});
}

}  // namespace kcnvrt::text
