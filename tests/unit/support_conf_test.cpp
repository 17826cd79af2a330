// Branches of a configuration, and the difference between two of them.
#include <utility>

#include "support_json.h"

namespace {

using namespace support_test;

TEST(Branch, IsFoundAlongDots) {
    const Json root =
        parse(R"({"ipv4":{"Routes":{"1":{"dst":"10.0.0.0"}}},"a":{"":{"":7,"b":8}},"":{"c":9},"list":[{"x":1}]})");
    struct Row {
        const char* path;
        const char* value;
    };
    const Row rows[] = {
        {"ipv4.Routes.", R"({"1":{"dst":"10.0.0.0"}})"},
        {"ipv4.Routes", R"({"1":{"dst":"10.0.0.0"}})"},
        {"ipv4.Routes.1.dst", R"("10.0.0.0")"},
        {"ipv4.Routes.1.dst.", R"("10.0.0.0")"},
        {"a..", R"({"":7,"b":8})"},
        {"a...", "7"},
        {"a..b", "8"},
        {".", R"({"c":9})"},
        {".c", "9"},
        {"..", "(null)"},
        {"ipv4.routes.", "(null)"},
        {"ipv", "(null)"},
        {"ipv4 ", "(null)"},
        {"ipv4.Routes.1.dst.x", "(null)"},
        {"list.0", "(null)"},
        {"list.0.x", "(null)"},
    };
    for (const Row& row : rows) EXPECT_EQ(dump(k_conf_find_branch(root.get(), row.path, 0)), row.value) << row.path;
    EXPECT_EQ(k_conf_find_branch(root.get(), "", 0), root.get());
}

TEST(Branch, OfNothingIsNothing) {
    const Json text = parse("\"text\"");
    EXPECT_EQ(k_conf_find_branch(nullptr, "a", 0), nullptr);
    EXPECT_EQ(k_conf_find_branch(nullptr, "", 0), nullptr);
    EXPECT_EQ(k_conf_find_branch(text.get(), nullptr, 0), nullptr);
    EXPECT_EQ(k_conf_find_branch(text.get(), "a", 0), nullptr);
}

struct Difference {
    const char* base;
    const char* candidate;
    const char* difference;
};

void expect_differences(const Difference& row, unsigned flag) {
    const Json base = parse(row.base);
    const Json candidate = parse(row.candidate);
    const Json difference = diff(base, candidate, flag);
    EXPECT_EQ(dump(difference), dump(parse(row.difference))) << row.base << " -> " << row.candidate;
    EXPECT_EQ(dump(applied(base, difference)), dump(candidate)) << row.base << " -> " << row.candidate;
}

const Difference kPatches[] = {
    {R"({})", R"({})", R"([])"},
    {R"({"a":{"b":[1,{"c":null}]}})", R"({"a":{"b":[1,{"c":null}]}})", R"([])"},
    {R"({"a":1,"b":2})", R"({"b":2,"a":1})", R"([])"},
    // members
    {R"({"a":1,"b":2})", R"({"a":1,"b":3})", R"([{"op":"replace","path":"/b","value":3}])"},
    {R"({"a":1})", R"({"a":1,"b":{"c":[]}})", R"([{"op":"add","path":"/b","value":{"c":[]}}])"},
    {R"({"a":1,"b":{"c":[]}})", R"({"a":1})", R"([{"op":"remove","path":"/b"}])"},
    {R"({"a":{"b":{"c":1,"d":2}}})", R"({"a":{"b":{"c":1,"d":null}}})",
     R"([{"op":"replace","path":"/a/b/d","value":null}])"},
    {R"({"a":null})", R"({})", R"([{"op":"remove","path":"/a"}])"},
    {R"({"a":{}})", R"({"a":[]})", R"([{"op":"replace","path":"/a","value":[]}])"},
    {R"({"a":1,"b":1})", R"({"c":1,"b":2})",
     R"([{"op":"remove","path":"/a"},{"op":"replace","path":"/b","value":2},{"op":"add","path":"/c","value":1}])"},
    // leaves that look alike
    {R"({"a":1})", R"({"a":1.0})", R"([{"op":"replace","path":"/a","value":1.0}])"},
    {R"({"a":0.0})", R"({"a":-0.0})", R"([{"op":"replace","path":"/a","value":-0.0}])"},
    {R"({"a":0.1})", R"({"a":0.1})", R"([])"},
    {R"({"a":true})", R"({"a":false})", R"([{"op":"replace","path":"/a","value":false}])"},
    {R"({"a":"1"})", R"({"a":1})", R"([{"op":"replace","path":"/a","value":1}])"},
    {R"({"a":"x\u0000y"})", R"({"a":"x\u0000z"})", R"([{"op":"replace","path":"/a","value":"x\u0000z"}])"},
    {R"({"a":"x"})", R"({"a":"x\u0000"})", R"([{"op":"replace","path":"/a","value":"x\u0000"}])"},
    {R"({"a":9223372036854775807})", R"({"a":9223372036854775806})",
     R"([{"op":"replace","path":"/a","value":9223372036854775806}])"},
    // names
    {R"({"a/b":1,"m~n":2,"":3,"~1":4})", R"({"a/b":2,"m~n":3,"":4,"~1":5})",
     R"([{"op":"replace","path":"/a~1b","value":2},{"op":"replace","path":"/m~0n","value":3},
         {"op":"replace","path":"/","value":4},{"op":"replace","path":"/~01","value":5}])"},
    {R"({"":{"":{"":1}}})", R"({"":{"":{}}})", R"([{"op":"remove","path":"///"}])"},
    {R"({"0":{"-":1}})", R"({"0":{"-":2}})", R"([{"op":"replace","path":"/0/-","value":2}])"},
    {R"({"é %^\"":1})", R"({"é %^\"":2})", R"([{"op":"replace","path":"/é %^\"","value":2}])"},
    // the document itself
    {R"({})", R"([])", R"([{"op":"replace","path":"","value":[]}])"},
    {R"("a")", R"("b")", R"([{"op":"replace","path":"","value":"b"}])"},
    {R"(null)", R"(null)", R"([])"},
    {R"({"a":1})", R"(null)", R"([{"op":"replace","path":"","value":null}])"},
    // arrays
    {R"([1,2,3])", R"([1,2,3])", R"([])"},
    {R"([1,2,3])", R"([1,9,3])", R"([{"op":"replace","path":"/1","value":9}])"},
    {R"([1,2,3])", R"([1,2,3,4])", R"([{"op":"add","path":"/3","value":4}])"},
    {R"([1,2,3])", R"([0,1,2,3])", R"([{"op":"add","path":"/0","value":0}])"},
    {R"([1,2,3])", R"([1,9,2,3])", R"([{"op":"add","path":"/1","value":9}])"},
    {R"([1,2,3])", R"([1,3])", R"([{"op":"remove","path":"/1"}])"},
    {R"([1,2,3])", R"([2,3])", R"([{"op":"remove","path":"/0"}])"},
    {R"([1,2,3])", R"([])", R"([{"op":"remove","path":"/2"},{"op":"remove","path":"/1"},{"op":"remove","path":"/0"}])"},
    {R"([])", R"([1,2])", R"([{"op":"add","path":"/0","value":1},{"op":"add","path":"/1","value":2}])"},
    {R"([1,1,1])", R"([1,1])", R"([{"op":"remove","path":"/2"}])"},
    {R"([1,1])", R"([1,1,1])", R"([{"op":"add","path":"/2","value":1}])"},
    {R"([1,2,3,4,9])", R"([1,7,9])",
     R"([{"op":"replace","path":"/1","value":7},{"op":"remove","path":"/3"},{"op":"remove","path":"/2"}])"},
    {R"([1,7,9])", R"([1,2,3,4,9])",
     R"([{"op":"replace","path":"/1","value":2},{"op":"add","path":"/2","value":3},)"
     R"({"op":"add","path":"/3","value":4}])"},
    {R"([{"a":1},{"a":2,"b":[5]}])", R"([{"a":1},{"a":2,"b":[5,6]}])", R"([{"op":"add","path":"/1/b/1","value":6}])"},
    {R"([[1,[2,[3]]],4])", R"([[1,[2,[3,5]]],4])", R"([{"op":"add","path":"/0/1/1/1","value":5}])"},
    {R"([[0],{"b":1}])", R"([[0],{"b":2},9])",
     R"([{"op":"replace","path":"/1/b","value":2},{"op":"add","path":"/2","value":9}])"},
};

TEST(JsonPatch, SaysWhatChanged) {
    for (const Difference& row : kPatches) expect_differences(row, K_CONF_JSON_PATCH);
}

TEST(JsonPatch, HoldsNamesWithNulAndNamesThatAreNotUtf8) {
    const Json base = parse("{}");
    const Json candidate = parse("{}");
    json_object_setn_new_nocheck(base.get(), "a\0b", 3, json_integer(1));
    json_object_setn_new_nocheck(base.get(), "a\0x", 3, json_integer(1));
    json_object_setn_new_nocheck(candidate.get(), "a\0c", 3, json_integer(1));
    json_object_setn_new_nocheck(candidate.get(), "a\0x", 3, json_integer(2));
    json_object_setn_new_nocheck(candidate.get(), "\xff/", 2, json_integer(3));
    for (const unsigned flag : {K_CONF_JSON_PATCH, K_CONF_MERGE_PATCH}) {
        const Json result = applied(base, diff(base, candidate, flag));
        EXPECT_EQ(json_object_size(result.get()), 3u);
        EXPECT_EQ(json_integer_value(json_object_getn(result.get(), "a\0c", 3)), 1);
        EXPECT_EQ(json_integer_value(json_object_getn(result.get(), "a\0x", 3)), 2);
        EXPECT_EQ(json_integer_value(json_object_getn(result.get(), "\xff/", 2)), 3);
    }
}

TEST(JsonPatch, LeavesTheOrderOfMembersAlone) {
    const Json base = parse(R"({"c":1,"a":2,"b":{"z":1,"y":2}})");
    const Json candidate = parse(R"({"a":3,"b":{"y":2,"x":1,"z":0},"c":1})");
    EXPECT_EQ(dump_in_order(applied(base, diff(base, candidate, K_CONF_JSON_PATCH))),
              R"({"c":1,"a":3,"b":{"z":0,"y":2,"x":1}})");
}

// `count` numbers inside a member whose name is a megabyte long.
Json under_a_long_name(int count, int value) {
    Json numbers{json_object()};
    for (int i = 0; i < count; ++i) json_object_set_new(numbers.get(), std::to_string(i).c_str(), json_integer(value));
    Json document{json_object()};
    json_object_set(document.get(), std::string(1 << 20, 'n').c_str(), numbers.get());
    return document;
}

TEST(JsonPatch, ReplacesEverythingWhereThePathsWouldBeTooLong) {
    for (const auto& [changes, operations] : {std::pair{63, 63}, {64, 1}}) {
        const Json base = under_a_long_name(changes, 1);
        const Json candidate = under_a_long_name(changes, 2);
        const Json patch{k_conf_diff_set2(base.get(), candidate.get(), 0, K_CONF_JSON_PATCH, nullptr)};
        EXPECT_EQ(static_cast<size_t>(operations), json_array_size(patch.get()));
        const Json applied{k_conf_apply(base.get(), patch.get(), nullptr)};
        EXPECT_TRUE(json_equal(candidate.get(), applied.get()));
    }
}

const Difference kMergePatches[] = {
    {R"({})", R"({})", R"({})"},
    {R"({"a":{"b":[1]},"c":null})", R"({"a":{"b":[1]},"c":null})", R"({})"},
    {R"({"a":1,"b":2})", R"({"a":1,"b":3})", R"({"b":3})"},
    {R"({"a":1})", R"({"a":1,"b":{"c":[]}})", R"({"b":{"c":[]}})"},
    {R"({"a":1,"b":2})", R"({"a":1})", R"({"b":null})"},
    {R"({"a":null})", R"({})", R"({"a":null})"},
    {R"({"a":null})", R"({"a":1})", R"({"a":1})"},
    {R"({"a":{"b":{"c":1,"d":2}},"e":{"f":1}})", R"({"a":{"b":{"c":3}},"e":{"f":1}})",
     R"({"a":{"b":{"c":3,"d":null}}})"},
    {R"({"a":{"b":1}})", R"({"a":{}})", R"({"a":{"b":null}})"},
    {R"({"a":1})", R"({"a":{}})", R"({"a":{}})"},
    {R"({})", R"({"a":{}})", R"({"a":{}})"},
    {R"({"a":[1]})", R"({"a":{"b":1}})", R"({"a":{"b":1}})"},
    {R"({"a":{"b":1}})", R"({"a":[1]})", R"({"a":[1]})"},
    {R"({"a":[1,2,3]})", R"({"a":[1,2]})", R"({"a":[1,2]})"},
    {R"({"a":[{"b":1}]})", R"({"a":[{"b":null}]})", R"({"a":[{"b":null}]})"},
    {R"({"a":[null]})", R"({"a":[null,null]})", R"({"a":[null,null]})"},
    {R"({"a":1})", R"({"a":1.0})", R"({"a":1.0})"},
    {R"({"a/b":1,"":2})", R"({"a/b":2,"":3})", R"({"a/b":2,"":3})"},
    {R"([1])", R"({"a":1})", R"({"a":1})"},
    {R"("text")", R"({})", R"({})"},
    {R"({"a":null,"b":{"c":null}})", R"({"a":null,"b":{"c":null,"d":1}})", R"({"b":{"d":1}})"},
};

TEST(MergePatch, SaysWhatChanged) {
    for (const Difference& row : kMergePatches) expect_differences(row, K_CONF_MERGE_PATCH);
}

TEST(MergePatch, LeavesNullMembersOfTheCandidateOut) {
    struct Row {
        const char* base;
        const char* candidate;
        const char* result;
    };
    EXPECT_EQ(dump(diff(parse("{}"), parse(R"({"a":null})"), K_CONF_MERGE_PATCH)), "{}");
    EXPECT_EQ(dump(diff(parse(R"({"a":1})"), parse(R"({"a":null})"), K_CONF_MERGE_PATCH)), R"({"a":null})");
    const Row rows[] = {
        {R"({})", R"({"a":null})", R"({})"},
        {R"({"a":1})", R"({"a":null})", R"({})"},
        {R"({"a":1})", R"({"a":{"b":null,"c":1}})", R"({"a":{"c":1}})"},
        {R"({})", R"({"a":{"b":{"c":null}}})", R"({"a":{"b":{}}})"},
        {R"({"a":{"b":2,"d":3}})", R"({"a":{"b":null,"c":null,"d":3}})", R"({"a":{"d":3}})"},
        {R"([])", R"({"a":null,"b":[null]})", R"({"b":[null]})"},
    };
    for (const Row& row : rows) {
        const Json base = parse(row.base);
        const Json difference = diff(base, parse(row.candidate), K_CONF_MERGE_PATCH);
        EXPECT_EQ(dump(applied(base, difference)), row.result) << row.base << " -> " << row.candidate;
    }
}

TEST(MergePatch, IsTheFormOfEveryFlagWithItsBit) {
    const Json base = parse(R"({"a":1})");
    const Json candidate = parse(R"({"a":2})");
    EXPECT_EQ(dump(diff(base, candidate, 3)), R"({"a":2})");
    EXPECT_EQ(dump(diff(base, candidate, 1)), R"([{"op":"replace","path":"/a","value":2}])");
}

struct Refusal {
    const char* base;
    const char* candidate;
    const char* message;
    const char* pointer;  // into the candidate
};

TEST(Difference, IsRefusedWithAMessage) {
    const Refusal rows[] = {
        {nullptr, "{}", "There is no base", nullptr},
        {"{}", nullptr, "There is no candidate", nullptr},
        {"{}", "[]", "The candidate is not an object, which a merge patch cannot express", ""},
        {"[]", "[]", "The candidate is not an object, which a merge patch cannot express", ""},
        {"{}", "null", "The candidate is not an object, which a merge patch cannot express", ""},
    };
    for (const Refusal& row : rows) {
        const Errors err{k_err_new()};
        const Json base = row.base == nullptr ? nullptr : parse(row.base);
        const Json candidate = row.candidate == nullptr ? nullptr : parse(row.candidate);
        EXPECT_EQ(diff(base, candidate, K_CONF_MERGE_PATCH, err.get()), nullptr);
        EXPECT_EQ(diff(base, candidate, K_CONF_MERGE_PATCH, nullptr), nullptr);
        ASSERT_EQ(k_err_count(err.get()), 1u);
        EXPECT_STREQ(k_err_function(err.get(), 0), "k_conf_diff_set2");
        EXPECT_STREQ(k_err_message(err.get(), 0), row.message);
        EXPECT_STREQ(k_err_pointer(err.get(), 0), row.pointer);
    }
}

TEST(Difference, WalksAsDeepAsTheBoundAndNoDeeper) {
    const Json base = parse("[7]");
    const Json deepest = nested(K_CONF_MAX_LEVELS);
    const Json too_deep = nested(K_CONF_MAX_LEVELS + 1);
    const Errors err{k_err_new()};
    const Json empty = parse("{}");
    for (const Json* other : {&base, &empty, &deepest}) {
        const Json difference = diff(*other, deepest, K_CONF_JSON_PATCH, err.get());
        EXPECT_TRUE(json_equal(applied(*other, difference, err.get()).get(), deepest.get()));
    }
    Json object{json_object()};
    json_object_set_new(object.get(), "a", nested(K_CONF_MAX_LEVELS - 1).release());
    const Json merge = diff(base, object, K_CONF_MERGE_PATCH, err.get());
    EXPECT_TRUE(json_equal(applied(base, merge, err.get()).get(), object.get()));
    EXPECT_EQ(k_err_count(err.get()), 0u);

    EXPECT_EQ(diff(base, too_deep, K_CONF_JSON_PATCH, err.get()), nullptr);
    EXPECT_EQ(diff(too_deep, base, K_CONF_JSON_PATCH, err.get()), nullptr);
    ASSERT_EQ(k_err_count(err.get()), 2u);
    EXPECT_STREQ(k_err_message(err.get(), 0), "The candidate is nested more than 2048 levels deep");
    EXPECT_STREQ(k_err_message(err.get(), 1), "The base is nested more than 2048 levels deep");
    EXPECT_STREQ(k_err_pointer(err.get(), 0), "");
    EXPECT_EQ(k_err_pointer(err.get(), 1), nullptr);
}

}  // namespace
