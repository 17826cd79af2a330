// Every member of the examples is used, regenerated or lost, which conversions without it and with other values show:
// they are made here with another program than the one under test, the library itself.
#include <gtest/gtest.h>
#include <k_cnvrt.h>

#include <map>
#include <vector>

#include "ask.h"
#include "explain/member_story.h"
#include "explain/result_sources.h"
#include "trials/counter_check.h"
#include "values.h"

namespace {

struct Example {
    const char* name;
    bool is_to_new;
    bool has_dsl_vlans;
};

constexpr Example kExamples[] = {
    {"home-gateway.old.json", true, false},
    {"home-gateway.new.json", false, false},
    {"dsl-gateway.old.json", true, true},
    {"dsl-gateway.new.json", false, true},
};

struct Converted {
    Tree tree;
    size_t messages;
};

Converted converted(const Example& example, json_t* source, bool is_back = false) {
    const Errors record(k_err_new());
    k_err_keep_printed(record.get());
    const uint8_t flags = example.has_dsl_vlans ? K_CNVRT_DSL_VLAN : 0;
    json_t* const tree = example.is_to_new != is_back ? k_cnvrt_to_new(source, nullptr, flags, record.get())
                                                      : k_cnvrt_to_old(source, flags, record.get());
    return {Tree(tree), k_err_count(record.get())};
}

void collect_leaves(json_t* value, const std::string& pointer, std::vector<std::string>& leaves) {
    if (json_object_size(value) + json_array_size(value) == 0) leaves.push_back(pointer);
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) {
        std::string token;
        for (const char* at = name; *at != '\0'; ++at)
            token += *at == '~' ? "~0" : *at == '/' ? "~1" : std::string(1, *at);
        collect_leaves(member, pointer + "/" + token, leaves);
    }
    for (size_t i = 0; i < json_array_size(value); ++i)
        collect_leaves(json_array_get(value, i), pointer + "/" + std::to_string(i), leaves);
}

std::vector<std::string> leaves_of(json_t* root) {
    std::vector<std::string> leaves;
    collect_leaves(root, "", leaves);
    return leaves;
}

void collect_values(json_t* value, const std::string& name, json_t* values) {
    const char* each;
    json_t* member;
    json_object_foreach(value, each, member) {
        if (each == name) json_array_append(values, member);
        collect_values(member, name, values);
    }
    for (size_t i = 0; i < json_array_size(value); ++i) collect_values(json_array_get(value, i), name, values);
}

// What might be said there instead: values of every type, words, and what the document says under that name elsewhere.
Tree other_values(json_t* root, const std::string& pointer) {
    Tree values =
        parsed(R"([true, false, 0, 1, 2, 5, 100, 0.5, "0", "1", "2", "7", "x", "", null, {}, [], [1], {"1": {}},
        "Enabled", "Disabled", "Connected", "lan", "wan", "5GHz", "2.4GHz", "192.0.2.7", "02:00:5e:00:53:77"])");
    collect_values(root, pointer.substr(pointer.rfind('/') + 1), values.get());
    return values;
}

std::string ask_about(const Example& example, const std::string& text, const std::string& pointer) {
    k_text_request_t request = request_for(K_TEXT_EXPLAIN, text);
    request.pointer = pointer.c_str();
    request.flags = K_TEXT_SHOW_SECRETS | (example.is_to_new ? K_TEXT_TOWARDS_NEW : K_TEXT_TOWARDS_OLD) |
                    (example.has_dsl_vlans ? K_TEXT_DSL_VLAN : 0);
    return output_of(ask(request));
}

std::string member_of(const json_t* object, const char* name) {
    return json_string_value(json_object_get(object, name));
}

// Null stands for nothing, too.
bool is_told_as(const json_t* told, const json_t* value) {
    return json_equal(told, value) == 1 || (json_is_null(told) && value == nullptr);
}

class Checked {
public:
    Checked(const Example& example, json_t* source)
        : example_{example},
          source_{source},
          text_{printed(source)},
          before_{converted(example, source)},
          back_{converted(example, before_.tree.get(), true)} {}

    // What the answer is, after making sure that it is right.
    std::string check(const std::string& pointer) {
        SCOPED_TRACE(std::string(example_.name) + ": " + pointer);
        const Tree answer = parsed(ask_about(example_, text_, pointer));
        const std::string word = member_of(answer.get(), "answer");
        EXPECT_EQ(member_of(answer.get(), "pointer"), pointer);
        json_t* const effects = json_object_get(answer.get(), "effects");
        const Tree rest(json_deep_copy(source_));
        change_at(rest.get(), pointer, nullptr);
        const Converted without = converted(example_, rest.get());
        if (without.tree == nullptr) return word + ", and needed";
        EXPECT_TRUE(json_is_array(effects));
        const bool is_different = !json_equal(without.tree.get(), before_.tree.get());
        if (word == "used") return check_used(pointer, effects, without, is_different);
        EXPECT_FALSE(is_different);
        EXPECT_EQ(json_array_size(effects), 0u);
        EXPECT_EQ(value_at(back_.tree.get(), pointer) != nullptr, word == "regenerated");
        return word;
    }

private:
    std::string check_used(const std::string& pointer, json_t* effects, const Converted& without, bool is_different) {
        size_t differences = 0;
        for (size_t i = 0; i < json_array_size(effects); ++i) {
            json_t* const effect = json_array_get(effects, i);
            const std::string place = member_of(effect, "pointer");
            json_t* const with = value_at(before_.tree.get(), place);
            json_t* const value = value_at(without.tree.get(), place);
            EXPECT_TRUE(is_told_as(json_object_get(effect, "with"), with)) << place;
            EXPECT_TRUE(is_told_as(json_object_get(effect, "without"), value)) << place;
            EXPECT_TRUE(with != nullptr || value != nullptr) << place;
            if (!json_equal(with, value)) ++differences;
        }
        EXPECT_EQ(differences != 0, is_different);
        if (differences != 0) return "used";
        const std::string place = json_array_size(effects) == 0 ? "" : member_of(json_array_get(effects, 0), "pointer");
        EXPECT_TRUE(is_seen_to_be_read(pointer, place)) << place;
        return json_array_size(effects) == 0 ? "used, as other values show" : "used, as the default is";
    }

    // Some other value is seen at the place, or in the messages.
    bool is_seen_to_be_read(const std::string& pointer, const std::string& place) {
        const Tree others = other_values(source_, pointer);
        const Tree changed(json_deep_copy(source_));
        for (size_t i = 0; i < json_array_size(others.get()); ++i) {
            change_at(changed.get(), pointer, json_array_get(others.get(), i));
            const Converted after = converted(example_, changed.get());
            if (place.empty() && after.messages != before_.messages) return true;
            if (place.empty() && after.tree != nullptr && !json_equal(after.tree.get(), before_.tree.get()))
                return true;
            const bool is_other = after.tree != nullptr &&
                                  !json_equal(value_at(after.tree.get(), place), value_at(before_.tree.get(), place));
            if (!place.empty() && is_other) return true;
        }
        return false;
    }

    const Example& example_;
    json_t* source_;
    std::string text_;
    Converted before_;
    Converted back_;
};

TEST(Explanations, OfEveryMemberOfTheExamplesAreRight) {
    for (const Example& each : kExamples) {
        const Tree source = example(each.name);
        Checked checked(each, source.get());
        std::map<std::string, size_t> counts;
        for (const std::string& leaf : leaves_of(source.get())) ++counts[checked.check(leaf)];
        for (const auto& [word, count] : counts) printf("%s: %zu members %s\n", each.name, count, word.c_str());
        EXPECT_GT(counts["used"], 150u);
        EXPECT_GT(counts["regenerated"], 10u);
        EXPECT_GT(counts["used, as the default is"], 0u);
    }
}

// What is said to have made a place makes a difference there, and every place is made by something or by nothing at
// all.
TEST(Explanations, OfResultsNameMembersThatMakeADifference) {
    for (const Example& each : kExamples) {
        const Tree source = example(each.name);
        const std::string text = printed(source.get());
        const Converted before = converted(each, source.get());
        const std::vector<std::string> places = leaves_of(before.tree.get());
        size_t named = 0;
        size_t of_nothing = 0;
        for (size_t i = 0; i < places.size(); i += 13) {
            SCOPED_TRACE(std::string(each.name) + ": " + places[i]);
            k_text_request_t request = request_for(K_TEXT_EXPLAIN, text);
            request.pointer = places[i].c_str();
            request.flags = K_TEXT_SHOW_SECRETS | K_TEXT_FROM_RESULT | (each.has_dsl_vlans ? K_TEXT_DSL_VLAN : 0);
            const Tree answer = parsed(output_of(ask(request)));
            EXPECT_TRUE(json_equal(json_object_get(answer.get(), "value"), value_at(before.tree.get(), places[i])));
            json_t* const sources = json_object_get(answer.get(), "sources");
            if (json_array_size(sources) == 0) ++of_nothing;
            for (size_t k = 0; k < json_array_size(sources); ++k) {
                json_t* const told = json_array_get(sources, k);
                const std::string pointer = member_of(told, "pointer");
                EXPECT_TRUE(json_equal(json_object_get(told, "value"), value_at(source.get(), pointer))) << pointer;
                const Tree rest(json_deep_copy(source.get()));
                change_at(rest.get(), pointer, nullptr);
                const Converted without = converted(each, rest.get());
                json_t* const value = value_at(without.tree.get(), places[i]);
                if (without.tree != nullptr && !json_equal(value, value_at(before.tree.get(), places[i]))) ++named;
            }
        }
        printf("%s: %zu places, %zu sources without which they are different, %zu places of no source\n", each.name,
               places.size() / 13 + 1, named, of_nothing);
        EXPECT_GT(named, places.size() / 13);
        EXPECT_LT(of_nothing, places.size() / 13 / 3);
    }
}

// ten times the interfaces, each under a name of its own.
Tree large_example() {
    Tree root = example("home-gateway.old.json");
    json_t* const ifaces = json_object_get(root.get(), "ifaces");
    const Tree originals(json_deep_copy(ifaces));
    const char* name;
    json_t* iface;
    for (int i = 1; i < 10; ++i)
        json_object_foreach(originals.get(), name, iface)
            json_object_set_new(ifaces, (std::string(name) + "." + std::to_string(i)).c_str(), json_deep_copy(iface));
    return root;
}

TEST(Explanations, TakeFewConversionsOfAnyDocument) {
    using namespace kcnvrt::text;
    const Tree source = large_example();
    const Way way = {true, nullptr, 0};
    CounterCheck check(way, nullptr);
    Outcome before;
    ASSERT_TRUE(check.convert(source.get(), before));
    ASSERT_NE(before.tree, nullptr);
    size_t most = 0;
    const std::vector<std::string> leaves = leaves_of(source.get());
    for (size_t i = 0; i < leaves.size(); i += 61) {
        CounterCheck one(way, nullptr);
        MemberStory story(one, source.get(), before);
        ASSERT_TRUE(story.find(leaves[i]));
        most = std::max(most, one.conversions());
    }
    printf("a member of %zu: at most %zu conversions\n", leaves.size(), most);
    EXPECT_LE(most, 40u);
    for (const char* place : {"/Device/Ifaces/ethernet/7/mac", "/Device/WiFi", "/Device", ""}) {
        CounterCheck one(way, nullptr);
        ResultSources sources(one, source.get(), before, place);
        ASSERT_TRUE(sources.find());
        printf("\"%s\": %zu members, %zu conversions\n", place, sources.found().size(), one.conversions());
        EXPECT_FALSE(sources.found().is_empty());
        EXPECT_LE(one.conversions(), 310u) << place;
    }
    CounterCheck one(way, nullptr);
    ResultSources sources(one, source.get(), before, "/Device/Ifaces/ethernet/7/mac");
    ASSERT_TRUE(sources.find());
    EXPECT_LE(one.conversions(), 80u);
}

}  // namespace
