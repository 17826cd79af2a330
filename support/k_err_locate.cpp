// Finds the objects that messages are placed in, in one walk over the source.
#include <charconv>
#include <cstring>

#include "k_err_record.h"

using namespace kcnvrt;

namespace {

// A container that is looked for, or one that has been walked through and may be met again.
struct Met {
    const json_t* container = nullptr;
    size_t node = kNone;
    bool is_wanted = false;
    bool is_visited = false;
};

// By their addresses; open addressing, never more than half full.
class Containers {
public:
    ~Containers() { free(slots_); }
    Containers() = default;
    Containers(const Containers&) = delete;
    Containers& operator=(const Containers&) = delete;

    Met* find(const json_t* container) const {
        if (count_ == 0) return nullptr;
        Met* slot = slot_of(container);
        return slot->container == nullptr ? nullptr : slot;
    }

    // The entry of a container, a new one where there is none. Null when memory runs out.
    Met* find_or_add(const json_t* container) {
        if (Met* found = find(container)) return found;
        if (count_ + 1 > capacity_ / 2 && !grow()) return nullptr;
        ++count_;
        Met* slot = slot_of(container);
        slot->container = container;
        return slot;
    }

private:
    static constexpr size_t kFirstCapacity = 64;

    Met* slot_of(const json_t* container) const {
        // Neighbours in memory differ in the middle bits of their addresses; the product spreads those upwards.
        const auto address = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(container));
        size_t at = static_cast<size_t>((address * 0x9E3779B97F4A7C15u) >> 32) & (capacity_ - 1);
        while (slots_[at].container != nullptr && slots_[at].container != container) at = (at + 1) & (capacity_ - 1);
        return &slots_[at];
    }

    bool grow() {
        const size_t capacity = capacity_ == 0 ? kFirstCapacity : capacity_ * 2;
        void* memory = noted(capacity > SIZE_MAX / sizeof(Met) ? nullptr : malloc(capacity * sizeof(Met)));
        if (memory == nullptr) return false;
        Met* const old = slots_;
        const size_t old_capacity = capacity_;
        slots_ = static_cast<Met*>(memory);
        capacity_ = capacity;
        for (size_t i = 0; i < capacity; ++i) slots_[i] = {};
        for (size_t i = 0; i < old_capacity; ++i)
            if (old[i].container != nullptr) *slot_of(old[i].container) = old[i];
        free(old);
        return true;
    }

    Met* slots_ = nullptr;
    size_t count_ = 0;
    size_t capacity_ = 0;
};

// A container that the walk is in, and which of its members comes next.
struct Frame {
    json_t* container;
    void* member;  // of an object
    size_t index;  // of an array: the next one
    size_t node;
};

// Without recursion: a tree that no parser made may be nested to any depth. A container that is met again is not walked
// again, so that shared ones cost what they cost once.
class Walk {
public:
    explicit Walk(k_err_t* err) : err_{err} {}

    // Looks for the object of a place.
    void want(const Place& place) {
        if (place.object == nullptr) return;
        Met* const met = containers_.find_or_add(place.object);
        if (met == nullptr || met->is_wanted) return;
        met->is_wanted = true;
        ++wanted_;
    }

    // False when memory ran out on the way.
    bool run(json_t* root) {
        bool goes_on = enter(root);
        while (goes_on && wanted_ > 0 && frames_.size() > 0) goes_on = step();
        return goes_on;
    }

    void settle(Place& place) const {
        if (place.object == nullptr) return;
        const Met* const met = containers_.find(place.object);
        place.object = nullptr;
        if (met != nullptr) place.node = met->node;
    }

private:
    bool step() {
        Frame& frame = frames_.last();
        json_t* const value = next_of(frame);
        if (value != nullptr) return enter(value);
        frames_.cut(frames_.size() - 1);
        return true;
    }

    static json_t* next_of(Frame& frame) {
        if (json_is_array(frame.container)) return json_array_get(frame.container, frame.index++);
        frame.member = frame.index++ == 0 ? json_object_iter(frame.container)
                                          : json_object_iter_next(frame.container, frame.member);
        return json_object_iter_value(frame.member);
    }

    bool enter(json_t* value) {
        if (!json_is_object(value) && !json_is_array(value)) return true;
        Met* const met = value->refcount > 1 ? containers_.find_or_add(value) : containers_.find(value);
        if (met == nullptr) return value->refcount == 1 && frames_.add({value, nullptr, 0, kNone});
        if (met->is_visited) return true;
        met->is_visited = true;
        if (!frames_.add({value, nullptr, 0, kNone})) return false;
        if (!met->is_wanted) return true;
        --wanted_;
        met->node = node_of_last();
        return met->node != kNone;
    }

    // A node for each frame that has none, from the root down; the last one's. kNone when memory runs out.
    size_t node_of_last() {
        size_t first = frames_.size();
        while (first > 0 && frames_[first - 1].node == kNone) --first;
        size_t node = first == 0 ? kNone : frames_[first - 1].node;
        for (size_t at = first; at < frames_.size(); ++at) {
            Node added{node, {}};
            if (at > 0 && !add_name_within(frames_[at - 1], added.name)) return kNone;
            if (!err_->nodes.add(added)) return kNone;
            node = frames_[at].node = err_->nodes.size() - 1;
        }
        return node;
    }

    // The name of the member, or the index of the element, that the walk has entered.
    bool add_name_within(const Frame& frame, NameAt& name) {
        if (json_is_object(frame.container))
            return err_->add_name(json_object_iter_key(frame.member), json_object_iter_key_len(frame.member), name);
        char digits[20];
        const char* const end = std::to_chars(digits, digits + sizeof digits, frame.index - 1).ptr;
        return err_->add_name(digits, static_cast<size_t>(end - digits), name);
    }

    k_err_t* err_;
    Containers containers_;
    GrowingArray<Frame> frames_;
    size_t wanted_ = 0;
};

// What no converter could place is about the whole source.
void place_the_rest(k_err_t* err, const json_t* root) {
    k_err_place(err, root, nullptr, 0);
    if (err->settled >= k_err_count(err)) return;
    // A source that is a leaf: a place that is its own end.
    const bool is_added = err->nodes.add({kNone, {}}) && err->places.add({nullptr, {}, err->nodes.size() - 1});
    for (size_t i = err->settled; is_added && i < k_err_count(err); ++i)
        err->messages[i]->place = err->places.size() - 1;
}

void forget_place(k_err_t* err, size_t index) {
    err->messages[index]->place = kNone;
}

bool waits_to_be_located(const k_err_t* err, size_t index) {
    const size_t place = err->messages[index]->place;
    return place != kNone && err->places[place].object != nullptr;
}

// Messages before the first one are none of this call's, also where it has placed them with its own.
void leave_alone_before(k_err_t* err, size_t first) {
    for (size_t i = first; i > 0 && waits_to_be_located(err, i - 1); --i) forget_place(err, i - 1);
    if (err->settled < first) err->settled = first;
}

}  // namespace

void k_err_locate(k_err_t* err, size_t first, json_t* root) {
    if (first >= k_err_count(err)) return;
    leave_alone_before(err, first);
    if (root == nullptr) {
        for (size_t i = first; i < k_err_count(err); ++i) forget_place(err, i);
    } else {
        place_the_rest(err, root);
        Walk walk{err};
        for (size_t i = first; i < k_err_count(err); ++i)
            if (err->messages[i]->place != kNone) walk.want(err->places[err->messages[i]->place]);
        walk.run(root);
        for (size_t i = first; i < k_err_count(err); ++i)
            if (err->messages[i]->place != kNone) walk.settle(err->places[err->messages[i]->place]);
    }
    err->settled = k_err_count(err);
}
