// Changed copies, and what it says that they are converted to something else.
#include "trials/counter_check.h"

#include <gtest/gtest.h>

#include "tree.h"

using namespace kcnvrt;
using namespace kcnvrt::text;

namespace {

constexpr size_t kSorted = JSON_COMPACT | JSON_SORT_KEYS;

Json parsed(const char* text) {
    return Json{json_loads(text, 0, nullptr)};
}

struct Wanted {
    const char* pointer;
    const char* value;  // null: taken away
};

// The text of the copy with those changes, after making sure that the tree is as it was.
std::string changed(const char* text, std::initializer_list<Wanted> wanted) {
    const Json root = parsed(text);
    GrowingArray<Change> changes;
    std::vector<Json> values;
    for (const Wanted& each : wanted) {
        values.emplace_back(each.value == nullptr ? nullptr : json_loads(each.value, JSON_DECODE_ANY, nullptr));
        changes.add({each.pointer, values.back().get()});
    }
    const Json copy = changed_copy(root.get(), changes);
    EXPECT_EQ(dumped(root.get(), kSorted), dumped(parsed(text).get(), kSorted));
    return dumped(copy.get(), kSorted);
}

TEST(ChangedCopy, TakesAwayAndReplaces) {
    EXPECT_EQ(changed(R"({"a": {"b": 1, "c": 2}, "d": 3})", {{"/a/b", nullptr}}), R"({"a":{"c":2},"d":3})");
    EXPECT_EQ(changed(R"({"a": {"b": 1, "c": 2}, "d": 3})", {{"/d", "[]"}, {"/a/c", "true"}}),
              R"({"a":{"b":1,"c":true},"d":[]})");
    EXPECT_EQ(changed(R"({"a": 1})", {}), R"({"a":1})");
}

TEST(ChangedCopy, CountsElementsAsTheyStood) {
    EXPECT_EQ(
        changed("[0,1,2,3,4,5,6,7,8,9,10,11]", {{"/2", nullptr}, {"/10", nullptr}, {"/11", "0"}, {"/0", nullptr}}),
        "[1,3,4,5,6,7,8,9,0]");
    EXPECT_EQ(changed("[[1,2],[3,4]]", {{"/1/0", nullptr}, {"/0", nullptr}}), "[[4]]");
}

TEST(ChangedCopy, KnowsNamesWithEscapes) {
    EXPECT_EQ(changed(R"({"a/b": {"~": 1}, "c": 2})", {{"/a~1b/~0", "5"}}), R"({"a/b":{"~":5},"c":2})");
    EXPECT_EQ(changed(R"({"a/b": {"~": 1}, "c": 2})", {{"/a~1b", nullptr}}), R"({"c":2})");
}

class CounterChecks : public testing::Test {
protected:
    bool is_changed_by(const char* pointer, const char* value) {
        Outcome before;
        EXPECT_TRUE(check.convert(source.get(), before));
        GrowingArray<Change> changes;
        const Json json{value == nullptr ? nullptr : json_loads(value, JSON_DECODE_ANY, nullptr)};
        changes.add({pointer, json.get()});
        bool is_changed = false;
        EXPECT_TRUE(check.convert_changed(source.get(), changes, before, is_changed));
        return is_changed;
    }

    Json source = parsed(R"({"httpaccess": [], "unknown": {"a": 1}, "lang": "en", "default_ssid": {"a": 1},
                             "ifaces": {"eth4": {"type": "ethernet", "mac": "02:00:5e:10:77:0a"}}})");
    CounterCheck check{{true, nullptr, 0}, nullptr};
};

TEST_F(CounterChecks, SeeWhatTheResultDependsOn) {
    EXPECT_TRUE(is_changed_by("/ifaces/eth4/mac", R"("02:00:5e:10:77:0b")"));
    EXPECT_TRUE(is_changed_by("/ifaces/eth4/mac", nullptr));
    EXPECT_TRUE(is_changed_by("/ifaces/eth4", nullptr));
    EXPECT_FALSE(is_changed_by("/unknown", nullptr));
    EXPECT_FALSE(is_changed_by("/unknown/a", "2"));
    EXPECT_EQ(check.conversions(), 10u);
}

TEST_F(CounterChecks, SeeMessages) {
    const auto outcome_of = [this](const char* text) {
        Outcome outcome;
        EXPECT_TRUE(check.convert(parsed(text).get(), outcome));
        return outcome;
    };
    const char* const bad = R"({"ifaces": {"eth4": {"type": "ethernet", "services": {
                               "ppp0": {"type": "ppp", "auth": "x"}}}}})";
    const char* const worse = R"({"ifaces": {"eth4": {"type": "ethernet", "services": {
                               "ppp0": {"type": "ppp", "auth": "x"}, "ppp1": {"type": "ppp", "auth": "x"}}}}})";
    EXPECT_EQ(outcome_of(bad).tree, nullptr);
    EXPECT_TRUE(is_same(outcome_of(bad), outcome_of(bad)));
    EXPECT_FALSE(is_same(outcome_of(bad), outcome_of(worse)));
    EXPECT_FALSE(is_same(outcome_of(bad), outcome_of("{}")));
}

TEST_F(CounterChecks, SeePrintedLines) {
    CounterCheck to_old{{false, nullptr, 0}, nullptr};
    Outcome with_line;
    Outcome without;
    ASSERT_TRUE(to_old.convert(parsed(R"({"Device": {"Roaming": {}}})").get(), with_line));
    ASSERT_TRUE(to_old.convert(parsed(R"({"Device": {}})").get(), without));
    EXPECT_EQ(k_err_printed_count(with_line.record.get()), 1u);
    EXPECT_FALSE(is_same(with_line, without));
}

TEST_F(CounterChecks, ConvertSectionsToo) {
    const Way way = {true, "Static", 0};
    Outcome there;
    Outcome back;
    ASSERT_TRUE(check.convert(way, parsed(R"([{"ip": "10.0.0.1", "netmask": "255.255.255.0"}])").get(), there));
    EXPECT_TRUE(json_is_object(there.tree.get()));
    EXPECT_FALSE(way.back().is_to_new);
    ASSERT_TRUE(check.convert({false, "route", 0}, there.tree.get(), back));
    EXPECT_TRUE(json_is_array(back.tree.get()));
}

// An allocator that counts what is made, and what is taken back by going back to a mark.
thread_local int depth = 0;
thread_local int goings_back = 0;

TEST_F(CounterChecks, GiveBackWhatTheyMade) {
    const TreeMemory memory = {[] { return ++depth, TreeMemory::Mark{}; },
                               [](TreeMemory::Mark) { --depth, ++goings_back; }};
    CounterCheck watched{{true, nullptr, 0}, &memory};
    Outcome before;
    ASSERT_TRUE(watched.convert(source.get(), before));
    GrowingArray<Change> changes;
    changes.add({"/unknown", nullptr});
    for (int i = 0; i < 3; ++i) {
        bool is_changed = true;
        ASSERT_TRUE(watched.convert_changed(source.get(), changes, before, is_changed));
        EXPECT_FALSE(is_changed);
    }
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(goings_back, 3);
    EXPECT_EQ(watched.conversions(), 4u);
}

}  // namespace
