// What comes back otherwise, and which entries of lists are the same.
#include "losses/comparison.h"

#include <gtest/gtest.h>

#include <vector>

#include "losses_in_lines.h"
#include "tree.h"

using kcnvrt::Json;
using namespace kcnvrt::text;

namespace {

std::string text_of(const json_t* value) {
    return dumped(value, JSON_COMPACT);
}

Lines differences_of(const char* before, const char* after) {
    const Json root{json_loads(before, 0, nullptr)};
    const Json back{json_loads(after, 0, nullptr)};
    Comparison comparison;
    EXPECT_TRUE(comparison.run(root.get(), back.get()));
    Lines lines;
    for (const Difference& each : comparison.differences()) {
        std::string line = std::string(name_of_kind(each.kind)) + " " + each.pointer + ":";
        if (each.before != nullptr) line += " " + text_of(each.before);
        if (each.after != nullptr) line += " -> " + text_of(each.after);
        lines.push_back(line);
    }
    return lines;
}

TEST(Comparison, KnowsWhatIsEqual) {
    EXPECT_EQ(differences_of(R"({"a": [1, {"2": null}], "b": {}})", R"({"b": {}, "a": [1, {"2": null}]})"), Lines{});
    EXPECT_EQ(differences_of("[]", "[]"), Lines{});
}

TEST(Comparison, TellsMembers) {
    EXPECT_EQ(differences_of(R"({"a": 1, "b": {"c": 2, "d~/": 3}})", R"({"b": {"c": 4, "e": 5, "6": 7}, "f": 8})"),
              (Lines{"dropped /a: 1", "changed /b/c: 2 -> 4", "dropped /b/d~0~1: 3",
                     R"(defaulted /b: -> {"e":5,"6":7})", R"(defaulted : -> {"f":8})"}));
}

TEST(Comparison, TellsOtherTypes) {
    EXPECT_EQ(differences_of(R"({"a": {"b": 1}, "c": [1], "d": 1})", R"({"a": [], "c": {}, "d": 1.0})"),
              (Lines{R"(changed /a: {"b":1} -> [])", "changed /c: [1] -> {}", "changed /d: 1 -> 1.0"}));
}

TEST(Comparison, TellsElementsThatGoAndCome) {
    EXPECT_EQ(differences_of(R"(["a", "b", "c"])", R"(["a", "c"])"),
              (Lines{"dropped /1: \"b\"", "renumbered /2: 2 -> 1"}));
    EXPECT_EQ(differences_of(R"(["a", "c"])", R"(["a", "b", "c"])"),
              (Lines{"renumbered /1: 1 -> 2", "defaulted : -> [\"b\"]"}));
    EXPECT_EQ(differences_of(R"(["a"])", R"(["b"])"), (Lines{R"(changed /0: "a" -> "b")"}));
}

TEST(Comparison, TellsEntriesThatMove) {
    EXPECT_EQ(differences_of(R"({"1": {"n": "a"}, "3": {"n": "b", "x": 1}, "max_instance": 3})",
                             R"({"1": {"n": "a"}, "2": {"n": "b"}, "max_instance": 2})"),
              (Lines{"changed /max_instance: 3 -> 2", "renumbered /3: 3 -> 2", "dropped /3/x: 1"}));
    EXPECT_EQ(differences_of(R"({"1": {"n": "a", "e": true}, "2": {"n": "b", "e": true}})",
                             R"({"1": {"n": "b", "e": true}, "2": {"n": "a", "e": true}})"),
              (Lines{"renumbered /1: 1 -> 2", "renumbered /2: 2 -> 1"}));
    EXPECT_EQ(differences_of(R"({"1": {"n": 5}, "4": {"n": 6}})", R"({"1": {"n": "6"}, "2": {}, "4": {"n": "5"}})"),
              (Lines{"renumbered /1: 1 -> 4", "changed /1/n: 5 -> \"5\"", "renumbered /4: 4 -> 1",
                     "changed /4/n: 6 -> \"6\"", R"(defaulted : -> {"2":{}})"}));
}

// Values that many entries share do not make one entry another one.
TEST(Comparison, KeepsEntriesThatAreAlikeInTheirPlaces) {
    EXPECT_EQ(differences_of(R"([{"e": 1}, {"e": 1}, {"e": 1}])", R"([{"e": 1}, {"e": 1}, {"e": 1}])"), Lines{});
    EXPECT_EQ(differences_of(R"([{"n": "a", "w": 1, "v": 1}, {"n": "b", "w": 2, "v": 2}])",
                             R"([{"n": "a", "w": 2, "v": 2}, {"n": "b", "w": 2, "v": 2}])"),
              (Lines{"changed /0/w: 1 -> 2", "changed /0/v: 1 -> 2"}));
    EXPECT_EQ(
        differences_of(R"([{"a": 1}, {"b": 2}])", R"([{"c": 3}, {"d": 4}])"),
        (Lines{"dropped /0/a: 1", R"(defaulted /0: -> {"c":3})", "dropped /1/b: 2", R"(defaulted /1: -> {"d":4})"}));
}

// What is no more than half of an entry may have been copied to the one that it is found in.
TEST(Comparison, BelievesInMovesOnlyOfMostOfAnEntry) {
    EXPECT_EQ(differences_of(R"([{"n": "x"}, {"n": "b", "w": 2}])", R"([{"n": "y", "w": 2}, {"n": "c"}])"),
              (Lines{R"(changed /0/n: "x" -> "y")", R"(defaulted /0: -> {"w":2})", R"(changed /1/n: "b" -> "c")",
                     "dropped /1/w: 2"}));
    EXPECT_EQ(
        differences_of(R"([{"n": "x"}, {"n": "b", "w": 2, "v": 3}])", R"([{"n": "y", "w": 2, "v": 3}, {"n": "c"}])"),
        (Lines{R"(dropped /0: {"n":"x"})", "renumbered /1: 1 -> 0", R"(changed /1/n: "b" -> "y")",
               R"(defaulted : -> [{"n":"c"}])"}));
}

TEST(Comparison, KeepsTheNumbersOfEntriesThatAreEquallyAlike) {
    EXPECT_EQ(differences_of(R"({"1": {"e": 1}, "2": {"e": 1}})", R"({"2": {"e": 1}, "3": {"e": 1}})"),
              Lines{"renumbered /1: 1 -> 3"});
}

// What differs deep inside an entry is no reason to take it for another one.
TEST(Comparison, LooksAtTheOutsideOfEntries) {
    EXPECT_EQ(differences_of(R"([[[[[[1]]]]], [[[[[2]]]]]])", R"([[[[[[2]]]]], [[[[[1]]]]]])"),
              (Lines{"changed /0/0/0/0/0/0: 1 -> 2", "changed /1/0/0/0/0/0: 2 -> 1"}));
}

TEST(Comparison, TakesOnlyNumbersForNumbers) {
    for (const char* name : {"", "0", "01", "1a", "-1", "a", "1234567890123456789"})
        EXPECT_EQ(number_of(name), 0u) << name;
    EXPECT_EQ(number_of("1"), 1u);
    EXPECT_EQ(number_of("123456789012345678"), 123456789012345678u);
}

}  // namespace
