// Where messages belong. Every value of the examples in turn is replaced by values of other types and contents: each
// message that this brings has a place that is in the source, and it is the value, but for the messages listed here.
// Two equal damages in different entries of a list have two places.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "conversions.h"
#include "damages.h"
#include "examples.h"
#include "pointer.h"
#include "replacements.h"
#include "sampling.h"
#include "silence.h"

namespace {

// Messages that a damage brings to another place than its own.
struct Elsewhere {
    const char* message;  // how it begins
    const char* reason;
    long met = 0;
};

Elsewhere elsewhere[] = {
    {"Users json is not object or array!", "it is about the users as a whole, after their own messages"},
    {"JSON is not array or object!", "the same of the section by itself"},
    {"Invalid field \"ExtensionChannel\"",
     "with coexistance it says the band width, and a damaged coexistance means so"},
};

bool is_elsewhere(const std::string& message) {
    for (Elsewhere& row : elsewhere) {
        if (!message.starts_with(row.message)) continue;
        ++row.met;
        return true;
    }
    return false;
}

struct Message {
    std::string text;
    std::string pointer;
};

struct Pair;

class MessagePlaces : public testing::Test {
protected:
    void TearDown() override {
        std::printf("%ld documents, %ld messages\n", documents, message_count);
        EXPECT_GT(message_count, 100);
    }

    std::vector<Message> messages_of(const Conversion& conversion, const std::string& what);
    void expect_at(const std::string& pointer, const Conversion& conversion, const std::string& what);
    void double_single_entries(const Conversion& conversion);
    std::set<std::string> places_of(const Conversion& conversion, const std::string& what);
    bool expect_two_places(const Conversion& conversion, const Pair& pair, json_t* damage);

    long documents = 0;
    long message_count = 0;
};

// Every message has a place in the source, and one that counts when nothing comes back.
std::vector<Message> MessagePlaces::messages_of(const Conversion& conversion, const std::string& what) {
    k_err_t* const err = k_err_new();
    bool is_rejected = false;
    {
        const Silence silence;
        const Tree result{conversion.run(conversion.source.get(), err)};
        is_rejected = result == nullptr;
    }
    bool has_counted = false;
    std::vector<Message> messages;
    for (size_t i = 0; i < k_err_count(err); ++i) {
        has_counted = has_counted || k_err_is_counted(err, i) != 0;
        const char* const pointer = k_err_pointer(err, i);
        const json_t* const there = pointer == nullptr ? nullptr : at_pointer(conversion.root, pointer);
        EXPECT_NE(nullptr, there) << what << ": " << k_err_message(err, i) << " at "
                                  << (pointer ? pointer : "no place");
        messages.push_back({k_err_message(err, i), pointer == nullptr ? "" : pointer});
    }
    EXPECT_EQ(is_rejected, has_counted) << what;
    EXPECT_EQ(1, k_err_is_complete(err)) << what;
    k_err_free(err);
    ++documents;
    message_count += static_cast<long>(messages.size());
    return messages;
}

// There, or in what was put there.
void MessagePlaces::expect_at(const std::string& pointer, const Conversion& conversion, const std::string& what) {
    for (const auto& [text, place] : messages_of(conversion, what))
        if (place != pointer && !place.starts_with(pointer + "/") && !is_elsewhere(text))
            ADD_FAILURE() << what << ":\n" << text << " at " << place;
}

// Of both examples in both directions, whole and by section.
void for_each_conversion(const std::function<void(const Conversion&)>& visit) {
    for (const Example& example : examples())
        for (const Conversion& conversion : conversions_of(example.old_document.get(), example.new_document.get()))
            if (conversion.root != nullptr && !conversion.has_base) visit(conversion);
}

// Whole documents take longer; in those each value gets a few of the damages, other ones than its neighbours.
size_t step_of(const Conversion& conversion) {
    return conversion.name.starts_with("to ") ? stride(7) : 1;
}

TEST_F(MessagePlaces, AreTheValueThatIsDamaged) {
    const std::vector<Tree> values = damages();
    for_each_conversion([&](const Conversion& conversion) {
        size_t turn = 0;
        for (const Place& place : places_in(conversion.root)) {
            for (size_t i = turn++ % step_of(conversion); i < values.size(); i += step_of(conversion)) {
                const Replacement replacement{place, values[i].get()};
                expect_at("/" + place.path, conversion,
                          conversion.name + ", /" + place.path + " as " + text_of(values[i].get()));
            }
        }
    });
    for (const Elsewhere& row : elsewhere) {
        std::printf("%6ld elsewhere: %s (%s)\n", row.met, row.message, row.reason);
        // A slow build samples too few damages to meet them all.
        EXPECT_TRUE(row.met > 0 || !is_fast()) << row.message;
    }
}

TEST_F(MessagePlaces, AreInASourceThatIsDamagedAsAWhole) {
    const std::vector<Tree> values = damages();
    for_each_conversion([&](const Conversion& conversion) {
        for (const Tree& value : values) {
            const bool is_wrapped = conversion.root != conversion.source.get();
            Tree source{is_wrapped ? json_pack("{s:O}", "source", value.get()) : json_incref(value.get())};
            const Conversion damaged{conversion.name, std::move(source), conversion.run, value.get()};
            messages_of(damaged, conversion.name + " of " + text_of(value.get()));
        }
    });
}

std::string parent_of(const std::string& path) {
    const size_t end = path.rfind('/');
    return end == std::string::npos ? "" : "/" + path.substr(0, end);
}

TEST_F(MessagePlaces, AreTheObjectThatLacksAMember) {
    for_each_conversion([&](const Conversion& conversion) {
        for (const Place& member : places_in(conversion.root)) {
            if (!json_is_object(member.container)) continue;
            json_object_del(member.container, member.name.c_str());
            expect_at(parent_of(member.path), conversion, conversion.name + " without /" + member.path);
            put(member, Tree{json_incref(member.value.get())});
        }
    });
}

// Where two members of a container are entries of a list, or alike: the leaves that both have under the same names.
struct Pair {
    const Place* one;
    const Place* other;
};

bool is_inside(const Place& leaf, const Place& entry) {
    return leaf.path == entry.path || leaf.path.starts_with(entry.path + "/");
}

// `places` has what is in an entry right behind the entry.
std::vector<const Place*> leaves_of(const std::vector<Place>& places, const Place& entry) {
    std::vector<const Place*> leaves;
    for (const Place* at = &entry; at != places.data() + places.size() && is_inside(*at, entry); ++at)
        if (is_leaf(at->value.get())) leaves.push_back(at);
    return leaves;
}

std::vector<Pair> pairs_of(const std::vector<Place>& places) {
    std::map<json_t*, const Place*> last_entry;
    std::vector<Pair> pairs;
    for (const Place& entry : places) {
        const Place* const before = std::exchange(last_entry[entry.container], &entry);
        if (before == nullptr) continue;
        std::map<std::string, const Place*> by_name;
        for (const Place* leaf : leaves_of(places, *before)) by_name[leaf->path.substr(before->path.size())] = leaf;
        for (const Place* leaf : leaves_of(places, entry)) {
            const std::string name = leaf->path.substr(entry.path.size());
            if (!name.empty() && by_name.contains(name)) pairs.push_back({by_name[name], leaf});
        }
    }
    return pairs;
}

// A second entry for each list that has only one, as long as that brings no message.
void MessagePlaces::double_single_entries(const Conversion& conversion) {
    for (const Place& list : places_in(conversion.root)) {
        json_t* const entries = list.value.get();
        const bool is_array = json_array_size(entries) == 1;
        json_t* const only = is_array ? json_array_get(entries, 0) : json_object_get(entries, "1");
        if (only == nullptr || json_object_get(entries, "2") != nullptr) continue;
        if (is_array)
            json_array_append_new(entries, json_deep_copy(only));
        else
            json_object_set_new(entries, "2", json_deep_copy(only));
        if (messages_of(conversion, conversion.name + ", /" + list.path + " with two entries").empty()) continue;
        if (is_array)
            json_array_remove(entries, 1);
        else
            json_object_del(entries, "2");
    }
}

// The first VLAN whose position does not match ends the list: the second is never looked at.
bool ends_its_list(const Place& leaf) {
    return leaf.path.ends_with("/pos") && leaf.path.find("vlans/") != std::string::npos;
}

std::set<std::string> MessagePlaces::places_of(const Conversion& conversion, const std::string& what) {
    std::set<std::string> places;
    for (const Message& message : messages_of(conversion, what)) places.insert(message.pointer);
    return places;
}

// The same damage in both brings the places of each alone, which are different. Whether each is reported at all.
bool MessagePlaces::expect_two_places(const Conversion& conversion, const Pair& pair, json_t* damage) {
    const std::string what =
        conversion.name + ", /" + pair.one->path + " and /" + pair.other->path + " as " + text_of(damage);
    std::set<std::string> of_other;
    {
        const Replacement other{*pair.other, damage};
        of_other = places_of(conversion, what);
    }
    const Replacement one{*pair.one, damage};
    const std::set<std::string> of_one = places_of(conversion, what);
    if (of_one.empty() || of_other.empty() || ends_its_list(*pair.one)) return false;
    const Replacement other{*pair.other, damage};
    const std::set<std::string> of_both = places_of(conversion, what);
    EXPECT_TRUE(std::ranges::includes(of_both, of_one)) << what;
    EXPECT_TRUE(std::ranges::includes(of_both, of_other)) << what;
    EXPECT_NE(of_one, of_other) << what;
    return true;
}

TEST_F(MessagePlaces, AreTwoForTwoEntriesOfAList) {
    const Tree damages[] = {Tree{json_real(0.5)}, Tree{json_string("text")}, Tree{json_integer(-7)}};
    long reported = 0;
    for_each_conversion([&](const Conversion& conversion) {
        double_single_entries(conversion);
        const std::vector<Place> places = places_in(conversion.root);
        size_t turn = 0;
        for (const Pair& pair : pairs_of(places))
            for (const Tree& damage : damages)
                if (turn++ % step_of(conversion) == 0) reported += expect_two_places(conversion, pair, damage.get());
    });
    std::printf("%ld pairs of damages\n", reported);
    EXPECT_GT(reported, 500);
}

}  // namespace
