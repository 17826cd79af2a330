// Rounds of growth: a trial conversion tells what is asked for, and some of that is put there.
#include "growth.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tree.h"
#include "words.h"

namespace {

constexpr int kMostRounds = 8;
constexpr int kMostStepsInARound = 24;
constexpr size_t kMostNodes = 4000;  // of a source; more of the same finds nothing more

// Decisions for many members at once, from a few bytes.
class Chance {
public:
    explicit Chance(uint16_t seed) : state_{seed * 0x9E3779B97F4A7C15u + 1} {}

    size_t below(size_t bound) {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<size_t>(state_ >> 11) % bound;
    }
    std::string_view take(size_t length) {
        const std::string_view word = kWords[below(std::size(kWords))];
        return word.substr(0, length);
    }

private:
    uint64_t state_;
};

constexpr json_int_t kEdges[] = {-1,         0,          1,         255,        256,           4094,
                                 4095,       65535,      65536,     2147483647, -2147483648LL, 2147483648,
                                 4294967295, 4294967296, INT64_MAX, INT64_MIN};

constexpr const char* kOddNames[] = {"0",
                                     "00",
                                     "01",
                                     "-1",
                                     "+1",
                                     " 1",
                                     "1 ",
                                     "1x",
                                     "1.5",
                                     "max_instance",
                                     "name",
                                     "65535",
                                     "65536",
                                     "2147483647",
                                     "2147483648",
                                     "4294967297",
                                     "99999999999999999999"};

template <class Choice>
json_int_t number(Choice& choice) {
    return choice.below(2) == 0 ? kEdges[choice.below(std::size(kEdges))] : static_cast<json_int_t>(choice.below(16));
}

Tree text(std::string_view text) {
    return Tree{json_stringn_nocheck(text.data(), text.size())};
}

template <class Choice>
Tree text_of_number(Choice& choice) {
    return text(std::to_string(number(choice)));
}

template <class Choice>
Tree some_text(Choice& choice) {
    switch (choice.below(8)) {
        case 0:
            return text("");
        case 1:
            return text("0");
        case 2:
            return text("1");
        case 3:
            return text_of_number(choice);
        case 4:
            return text(choice.take(choice.below(40)));
        default:
            return text(kWords[choice.below(std::size(kWords))]);
    }
}

template <class Choice>
Tree numbered_list(Choice& choice) {
    Tree list{json_object()};
    const size_t count = choice.below(4);
    for (size_t i = 1; i <= count; ++i) json_object_set_new(list.get(), std::to_string(i).c_str(), json_object());
    json_object_set_new(list.get(), "max_instance", json_integer(static_cast<json_int_t>(count)));
    return list;
}

template <class Choice>
Tree array_of(Choice& choice, json_t* (*element)(Choice&)) {
    Tree array{json_array()};
    for (size_t count = choice.below(4); count > 0; --count) json_array_append_new(array.get(), element(choice));
    return array;
}

template <class Choice>
Tree some_value(Choice& choice) {
    switch (choice.below(24)) {
        case 0:
            return Tree{json_null()};
        case 1:
            return Tree{json_true()};
        case 2:
            return Tree{json_false()};
        case 3:
            return Tree{json_integer(number(choice))};
        case 4:
            return Tree{json_real(static_cast<double>(number(choice)) / 4)};
        case 5:
        case 6:
            return Tree{json_integer(static_cast<json_int_t>(choice.below(3)))};
        case 7:
        case 8:
        case 9:
            return Tree{json_object()};
        case 10:
            return Tree{json_array()};
        case 11:
        case 12:
            return array_of<Choice>(choice, [](Choice&) { return json_object(); });
        case 13:
            return array_of<Choice>(choice, [](Choice& each) { return some_text(each).release(); });
        case 14:
        case 15:
        case 16:
            return numbered_list(choice);
        default:
            return some_text(choice);
    }
}

template <class Choice>
std::string some_name(Choice& choice) {
    switch (choice.below(4)) {
        case 0:
            return std::to_string(choice.below(8));
        case 1:
            return kOddNames[choice.below(std::size(kOddNames))];
        case 2:
            return std::string{choice.take(choice.below(12))};
        default:
            return std::string{kWords[choice.below(std::size(kWords))]};
    }
}

void store(json_t* object, std::string_view name, Tree value) {
    json_object_setn_new_nocheck(object, name.data(), name.size(), value.release());
}

class Round {
public:
    Round(json_t* source, const Trial& trial) : lookups_{lookups_of(source, trial)} {}

    size_t choices() const { return lookups_.members.size() + lookups_.walked.size(); }

    void answer_one(Bytes& bytes) {
        const size_t which = bytes.below(std::min<size_t>(choices(), 65536));
        if (which < lookups_.members.size())
            give(lookups_.members[which], some_value(bytes));
        else
            lengthen(lookups_.walked[which - lookups_.members.size()], bytes);
    }

    // One in `rarity` members that are missing, and of the containers.
    void answer_many(Bytes& bytes) {
        const size_t rarity = 1 + bytes.below(8);
        Chance chance{bytes.next_pair()};
        for (const Lookup& lookup : lookups_.members)
            if (member(lookup) == nullptr && chance.below(rarity) == 0) give(lookup, some_value(chance));
        for (json_t* container : lookups_.walked)
            if (chance.below(rarity) == 0) lengthen(container, chance);
    }

private:
    static json_t* member(const Lookup& lookup) {
        return json_object_getn(lookup.object, lookup.name.data(), lookup.name.size());
    }

    template <class Choice>
    void lengthen(json_t* container, Choice& choice) {
        if (json_is_array(container))
            json_array_append_new(container, some_value(choice).release());
        else
            give({container, some_name(choice)}, some_value(choice));
    }

    void give(const Lookup& lookup, Tree value) {
        replaced_.emplace_back(json_incref(member(lookup)));
        store(lookup.object, lookup.name, std::move(value));
    }

    // Looked-up members may lie in what a step has cut off: it lives to the end of the round.
    std::vector<Tree> replaced_;
    Lookups lookups_;
};

size_t count_of_nodes(json_t* tree) {
    size_t count = 1;
    for (void* at = json_object_iter(tree); at != nullptr; at = json_object_iter_next(tree, at))
        count += count_of_nodes(json_object_iter_value(at));
    for (size_t i = 0; i < json_array_size(tree); ++i) count += count_of_nodes(json_array_get(tree, i));
    return count;
}

// What a step's first byte says.
constexpr uint8_t kEndOfRound = 0;
constexpr uint8_t kMany = 1;

void grow_once(json_t* source, Bytes& bytes, const Trial& trial) {
    Round round{source, trial};
    for (int step = 0; step < kMostStepsInARound && !bytes.are_used_up() && round.choices() > 0; ++step) {
        const uint8_t kind = bytes.next() % 8;
        if (kind == kEndOfRound) return;
        if (kind == kMany)
            round.answer_many(bytes);
        else
            round.answer_one(bytes);
    }
}

}  // namespace

void grow(json_t* source, Bytes& bytes, const Trial& trial) {
    for (int round = 0; round < kMostRounds && !bytes.are_used_up(); ++round) {
        if (count_of_nodes(source) > kMostNodes) return;
        grow_once(source, bytes, trial);
    }
}
