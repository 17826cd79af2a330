// A difference applied to its base: each operation, and what cannot be applied.
#include "support_json.h"

namespace {

using namespace support_test;

struct Application {
    const char* base;
    const char* difference;
    const char* result;
};

const Application kApplications[] = {
    // add
    {R"({"a":1})", R"([{"op":"add","path":"/b","value":[2]}])", R"({"a":1,"b":[2]})"},
    {R"({"a":1})", R"([{"op":"add","path":"/a","value":null}])", R"({"a":null})"},
    {R"({"a":[1,3]})", R"([{"op":"add","path":"/a/1","value":2}])", R"({"a":[1,2,3]})"},
    {R"({"a":[1,2]})", R"([{"op":"add","path":"/a/2","value":3}])", R"({"a":[1,2,3]})"},
    {R"({"a":[1,2]})", R"([{"op":"add","path":"/a/-","value":3}])", R"({"a":[1,2,3]})"},
    {R"({"a":[]})", R"([{"op":"add","path":"/a/0","value":[]},{"op":"add","path":"/a/0/-","value":1}])",
     R"({"a":[[1]]})"},
    {R"({"a":{}})", R"([{"op":"add","path":"/a/-","value":3}])", R"({"a":{"-":3}})"},
    {R"({"a":{}})", R"([{"op":"add","path":"/a/01","value":3}])", R"({"a":{"01":3}})"},
    {R"({"a":1})", R"([{"op":"add","path":"","value":"all"}])", R"("all")"},
    {R"(1)", R"([{"op":"add","path":"","value":{}},{"op":"add","path":"/a","value":1}])", R"({"a":1})"},
    {R"({})", R"([{"op":"add","path":"/","value":1},{"op":"add","path":"/~0~1~01","value":2}])", R"({"":1,"~/~1":2})"},
    // remove
    {R"({"a":1,"b":2})", R"([{"op":"remove","path":"/a"}])", R"({"b":2})"},
    {R"([1,2,3])", R"([{"op":"remove","path":"/1"},{"op":"remove","path":"/1"}])", R"([1])"},
    {R"({"a":{"":{"b":1}}})", R"([{"op":"remove","path":"/a//b"}])", R"({"a":{"":{}}})"},
    // replace
    {R"({"a":{"b":1}})",
     R"([{"op":"replace","path":"/a/b","value":{"c":2}},{"op":"replace","path":"/a/b/c","value":3}])",
     R"({"a":{"b":{"c":3}}})"},
    {R"([1,2])", R"([{"op":"replace","path":"/1","value":[]}])", R"([1,[]])"},
    {R"([1,2])", R"([{"op":"replace","path":"","value":null}])", R"(null)"},
    // move
    {R"({"a":{"b":1},"c":{}})", R"([{"op":"move","from":"/a/b","path":"/c/d"}])", R"({"a":{},"c":{"d":1}})"},
    {R"([1,2,3,4])", R"([{"op":"move","from":"/0","path":"/2"}])", R"([2,3,1,4])"},
    {R"([1,2,3])", R"([{"op":"move","from":"/0","path":"/-"}])", R"([2,3,1])"},
    {R"({"a":1})", R"([{"op":"move","from":"/a","path":"/a"}])", R"({"a":1})"},
    {R"([1,2])", R"([{"op":"move","from":"/1","path":"/1"}])", R"([1,2])"},
    {R"({"a":{"b":1}})", R"([{"op":"move","from":"/a/b","path":"/a"}])", R"({"a":1})"},
    {R"({"a":{"b":1}})", R"([{"op":"move","from":"/a","path":""}])", R"({"b":1})"},
    {R"({"a":1})", R"([{"op":"move","from":"","path":""}])", R"({"a":1})"},
    {R"({"a":{"b":1},"ab":{}})", R"([{"op":"move","from":"/a","path":"/ab/c"}])", R"({"ab":{"c":{"b":1}}})"},
    // copy
    {R"({"a":{"b":1}})", R"([{"op":"copy","from":"/a","path":"/c"},{"op":"replace","path":"/c/b","value":2}])",
     R"({"a":{"b":1},"c":{"b":2}})"},
    {R"({"a":{"b":1}})", R"([{"op":"copy","from":"/a","path":"/a/c"}])", R"({"a":{"b":1,"c":{"b":1}}})"},
    {R"({"a":1})", R"([{"op":"copy","from":"","path":"/b"},{"op":"copy","from":"","path":"/b/c"}])",
     R"({"a":1,"b":{"a":1,"c":{"a":1,"b":{"a":1}}}})"},
    {R"({"a":[1]})", R"([{"op":"copy","from":"/a","path":"/a/-"},{"op":"add","path":"/a/1/-","value":2}])",
     R"({"a":[1,[1,2]]})"},
    {R"({"a":[1]})", R"([{"op":"copy","from":"/a","path":""}])", R"([1])"},
    // test
    {R"({"a":[1,{"b":null}]})", R"([{"op":"test","path":"/a","value":[1,{"b":null}]}])", R"({"a":[1,{"b":null}]})"},
    {R"({"a":1,"b":2})", R"([{"op":"test","path":"","value":{"b":2,"a":1}}])", R"({"a":1,"b":2})"},
    {R"({"a":1})", R"([{"op":"test","path":"/a","value":1.0}])", R"({"a":1})"},
    {R"({"a":-0.0})", R"([{"op":"test","path":"/a","value":0}])", R"({"a":-0.0})"},
    {R"({"a":-0.0})", R"([{"op":"test","path":"/a","value":0.0}])", R"({"a":-0.0})"},
    {R"({"a":[true,false]})", R"([{"op":"test","path":"/a","value":[true,false]}])", R"({"a":[true,false]})"},
    // members that an operation does not use are ignored
    {R"({"a":1})", R"([{"op":"remove","path":"/a","value":3,"from":7,"x":[]}])", R"({})"},
    {R"({"a":1})", R"([])", R"({"a":1})"},
    // merge patches
    {R"({"a":{"b":1,"c":2},"d":[1]})", R"({"a":{"b":null,"e":3},"d":[null],"f":null})",
     R"({"a":{"c":2,"e":3},"d":[null]})"},
    {R"({"a":1})", R"({"a":{"b":{"c":null,"d":4}}})", R"({"a":{"b":{"d":4}}})"},
    {R"([1])", R"({"a":null,"b":1})", R"({"b":1})"},
    {R"("x")", R"({})", R"({})"},
    {R"({"a":null})", R"({})", R"({"a":null})"},
};

TEST(Apply, GivesANewDocument) {
    for (const Application& row : kApplications) {
        const Errors err{k_err_new()};
        Json base = parse(row.base);
        Json difference = parse(row.difference);
        const Json result = applied(base, difference, err.get());
        EXPECT_EQ(dump(result), row.result) << row.difference;
        EXPECT_EQ(k_err_count(err.get()), 0u) << k_err_message(err.get(), 0);
        EXPECT_EQ(dump(base), dump(parse(row.base))) << row.difference;
        EXPECT_EQ(dump(difference), dump(parse(row.difference)));
        base.reset();
        difference.reset();
        EXPECT_EQ(dump(result), row.result) << "the result must not depend on its sources";
    }
}

struct Misfit {
    const char* base;
    const char* difference;
    const char* message;
};

const Misfit kMisfits[] = {
    {R"({})", R"(["add"])", R"(Operation 1 at "": it is no operation)"},
    {R"({})", R"([null])", R"(Operation 1 at "": it is no operation)"},
    {R"({})", R"([{}])", R"(Operation 1 at "": the operation is unknown)"},
    {R"({})", R"([{"op":"Add","path":"/a","value":1}])", R"(Operation 1 at "/a": the operation is unknown)"},
    {R"({})", R"([{"op":1,"path":"/a","value":1}])", R"(Operation 1 at "/a": the operation is unknown)"},
    {R"({})", R"([{"op":"add","path":"/a","value":1},{"op":"add","value":1}])", R"(Operation 2 at "": it has no path)"},
    {R"({})", R"([{"op":"add","path":1,"value":1}])", R"(Operation 1 at "": it has no path)"},
    {R"({})", R"([{"op":"add","path":"/a"}])", R"(Operation 1 at "/a": it has no value)"},
    {R"({"a":1})", R"([{"op":"replace","path":"/a"}])", R"(Operation 1 at "/a": it has no value)"},
    {R"({"a":1})", R"([{"op":"test","path":"/a"}])", R"(Operation 1 at "/a": it has no value)"},
    {R"({"a":1})", R"([{"op":"move","path":"/b"}])", R"(Operation 1 at "/b": it does not say where to take the value)"},
    {R"({"a":1})", R"([{"op":"copy","path":"/b","from":null}])",
     R"(Operation 1 at "/b": it does not say where to take the value)"},
    // pointers
    {R"({})", R"([{"op":"add","path":"a","value":1}])", R"(Operation 1 at "a": a path is not a JSON Pointer)"},
    {R"({})", R"([{"op":"add","path":"/~","value":1}])", R"(Operation 1 at "/~": a path is not a JSON Pointer)"},
    {R"({})", R"([{"op":"add","path":"/~2","value":1}])", R"(Operation 1 at "/~2": a path is not a JSON Pointer)"},
    {R"({})", R"([{"op":"add","path":"/~/a","value":1}])", R"(Operation 1 at "/~/a": a path is not a JSON Pointer)"},
    {R"({"a":1})", R"([{"op":"copy","from":"a","path":"/b"}])", R"(Operation 1 at "/b": a path is not a JSON Pointer)"},
    // paths that lead nowhere
    {R"({"a":1})", R"([{"op":"remove","path":"/b"}])", R"(Operation 1 at "/b": the path leads nowhere)"},
    {R"({"a":1})", R"([{"op":"replace","path":"/b","value":1}])", R"(Operation 1 at "/b": the path leads nowhere)"},
    {R"({"a":1})", R"([{"op":"add","path":"/b/c","value":1}])", R"(Operation 1 at "/b/c": the path leads nowhere)"},
    {R"({"a":1})", R"([{"op":"add","path":"/a/b","value":1}])", R"(Operation 1 at "/a/b": the path leads nowhere)"},
    {R"({"a":"x"})", R"([{"op":"add","path":"/a/0","value":1}])", R"(Operation 1 at "/a/0": the path leads nowhere)"},
    {R"({"a":"x"})", R"([{"op":"add","path":"/a/-","value":1}])", R"(Operation 1 at "/a/-": the path leads nowhere)"},
    {R"(1)", R"([{"op":"add","path":"/a","value":1}])", R"(Operation 1 at "/a": the path leads nowhere)"},
    {R"(null)", R"([{"op":"remove","path":"/a"}])", R"(Operation 1 at "/a": the path leads nowhere)"},
    {R"([1])", R"([{"op":"remove","path":"/a"}])", R"(Operation 1 at "/a": the path leads nowhere)"},
    {R"({"a":1})", R"([{"op":"test","path":"/b","value":null}])", R"(Operation 1 at "/b": the path leads nowhere)"},
    {R"({"a":1})", R"([{"op":"copy","from":"/b","path":"/c"}])", R"(Operation 1 at "/c": there is no value to take)"},
    {R"({"a":1})", R"([{"op":"move","from":"/b","path":"/c"}])", R"(Operation 1 at "/c": there is no value to take)"},
    {R"([1])", R"([{"op":"move","from":"/-","path":"/0"}])", R"(Operation 1 at "/0": there is no value to take)"},
    {R"({"a":[1]})", R"([{"op":"move","from":"/a","path":"/b/c"}])",
     R"(Operation 1 at "/b/c": the path leads nowhere)"},
    // indexes
    {R"([1,2])", R"([{"op":"add","path":"/3","value":1}])", R"(Operation 1 at "/3": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/01","value":1}])", R"(Operation 1 at "/01": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/00","value":1}])", R"(Operation 1 at "/00": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/+1","value":1}])", R"(Operation 1 at "/+1": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/-1","value":1}])", R"(Operation 1 at "/-1": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/1 ","value":1}])", R"(Operation 1 at "/1 ": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/1e0","value":1}])", R"(Operation 1 at "/1e0": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"add","path":"/","value":1}])", R"(Operation 1 at "/": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"replace","path":"/2","value":1}])", R"(Operation 1 at "/2": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"replace","path":"/-","value":1}])", R"(Operation 1 at "/-": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"remove","path":"/-"}])", R"(Operation 1 at "/-": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"remove","path":"/2"}])", R"(Operation 1 at "/2": the path leads nowhere)"},
    {R"([1,2])", R"([{"op":"remove","path":"/18446744073709551616"}])",
     R"(Operation 1 at "/18446744073709551616": the path leads nowhere)"},
    {R"([[1]])", R"([{"op":"add","path":"/-/0","value":1}])", R"(Operation 1 at "/-/0": the path leads nowhere)"},
    // operations that cannot be
    {R"({"a":1})", R"([{"op":"remove","path":""}])", R"(Operation 1 at "": the whole document cannot be removed)"},
    {R"({"a":{"b":1}})", R"([{"op":"move","from":"/a","path":"/a/b"}])",
     R"(Operation 1 at "/a/b": a value cannot be moved into itself)"},
    {R"({"a":1})", R"([{"op":"move","from":"","path":"/a"}])",
     R"(Operation 1 at "/a": a value cannot be moved into itself)"},
    {R"({"a":1})", R"([{"op":"test","path":"/a","value":2}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1})", R"([{"op":"test","path":"/a","value":"1"}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1})", R"([{"op":"test","path":"/a","value":true}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":[1,2]})", R"([{"op":"test","path":"/a","value":[1]}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":[1,2]})", R"([{"op":"test","path":"/a","value":[2,1]}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":{"b":1}})", R"([{"op":"test","path":"/a","value":{"c":1}}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":{}})", R"([{"op":"test","path":"/a","value":[]}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":[]})", R"([{"op":"test","path":"/a","value":{}}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":null})", R"([{"op":"test","path":"/a","value":false}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":"x"})", R"([{"op":"test","path":"/a","value":"x\u0000"}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1})", R"([{"op":"test","path":"/a","value":1.5}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1.5})", R"([{"op":"test","path":"/a","value":1}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1.5})", R"([{"op":"test","path":"/a","value":"1.5"}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":1.5})", R"([{"op":"test","path":"/a","value":2.5}])", R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":-9223372036854775808})", R"([{"op":"test","path":"/a","value":-1e19}])",
     R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":9007199254740993})", R"([{"op":"test","path":"/a","value":9007199254740992.0}])",
     R"(Operation 1 at "/a": the test failed)"},
    {R"({"a":9223372036854775807})", R"([{"op":"test","path":"/a","value":9223372036854775808.0}])",
     R"(Operation 1 at "/a": the test failed)"},
    // the first operation that does not fit ends it
    {R"({"a":1})", R"([{"op":"remove","path":"/a"},{"op":"remove","path":"/a"},{"op":"remove","path":"/b"}])",
     R"(Operation 2 at "/a": the path leads nowhere)"},
    // no difference at all
    {R"({})", R"("text")", "The difference is neither an array nor an object"},
    {R"({})", R"(null)", "The difference is neither an array nor an object"},
    {R"({})", nullptr, "There is no difference"},
    {nullptr, R"([])", "There is no base"},
};

// Where a message belongs in the difference: an operation is an element of it, counted from 0.
std::string place_of(const std::string& message) {
    if (message.starts_with("There is no ")) return "(nowhere)";
    const size_t number = message.find_first_of("0123456789");
    return message.starts_with("Operation ") ? "/" + std::to_string(std::stoi(message.substr(number)) - 1) : "";
}

void expect_refusal(const Json& base, const Json& difference, const std::string& message) {
    const Errors err{k_err_new()};
    EXPECT_EQ(applied(base, difference, err.get()), nullptr) << message;
    EXPECT_EQ(applied(base, difference, nullptr), nullptr) << message;
    ASSERT_EQ(k_err_count(err.get()), 1u) << message;
    EXPECT_STREQ(k_err_function(err.get(), 0), "k_conf_apply");
    EXPECT_EQ(k_err_message(err.get(), 0), message);
    const char* pointer = k_err_pointer(err.get(), 0);
    EXPECT_EQ(pointer == nullptr ? "(nowhere)" : std::string{pointer}, place_of(message)) << message;
    EXPECT_EQ(k_err_is_counted(err.get(), 0), 1);
    EXPECT_EQ(k_err_is_complete(err.get()), 1);
}

TEST(Apply, ReportsWhatDoesNotFit) {
    for (const Misfit& row : kMisfits) {
        const Json base = row.base == nullptr ? nullptr : parse(row.base);
        const Json difference = row.difference == nullptr ? nullptr : parse(row.difference);
        expect_refusal(base, difference, row.message);
        EXPECT_EQ(dump(base), row.base == nullptr ? "(null)" : dump(parse(row.base)));
    }
}

TEST(Apply, SharesOnlyWhatNoOperationGoesThrough) {
    const Json base = parse(R"({"a":{"b":{"c":1}},"d":{"e":1}})");
    const Json result = applied(base, parse(R"([{"op":"replace","path":"/a/b/c","value":2}])"));
    EXPECT_EQ(json_object_get(result.get(), "d"), json_object_get(base.get(), "d"));
    EXPECT_NE(json_object_get(result.get(), "a"), json_object_get(base.get(), "a"));
    EXPECT_EQ(dump(base), R"({"a":{"b":{"c":1}},"d":{"e":1}})");
}

TEST(Apply, GivesARootOfItsOwnAlsoWhenNothingChanges) {
    for (const char* text : {"{}", "[]", R"({"a":{}})"}) {
        const Json base = parse(text);
        EXPECT_NE(applied(base, parse("[]")), base);
        EXPECT_NE(applied(base, parse("{}")), base);
    }
    const Json base = parse(R"({"a":{}})");
    EXPECT_NE(applied(base, parse(R"([{"op":"copy","from":"/a","path":""}])")).get(), json_object_get(base.get(), "a"));
}

TEST(Apply, NeverNestsADocumentTooDeep) {
    const Json base{json_object()};
    json_object_set_new(base.get(), "deep", nested(K_CONF_MAX_LEVELS - 1).release());
    json_object_set_new(base.get(), "room", nested(2).release());
    const Json copy = parse(R"([{"op":"copy","from":"/deep","path":"/again"}])");
    EXPECT_NE(applied(base, copy), nullptr);
    for (const char* operation : {"copy", "move"}) {
        const Json deeper = parse(R"([{"op":")" + std::string(operation) + R"(","from":"/deep","path":"/room/0"}])");
        expect_refusal(base, deeper,
                       R"(Operation 1 at "/room/0": the document would be nested more than 2048 levels deep)");
    }
    const Json value{json_pack("[{s:s,s:s,s:o}]", "op", "add", "path", "/room/0/0", "value",
                               nested(K_CONF_MAX_LEVELS - 2).release())};
    expect_refusal(base, value,
                   R"(Operation 1 at "/room/0/0": the document would be nested more than 2048 levels deep)");
}

TEST(Apply, PutsNothingTooDeepInThePlaceOfAnother) {
    const Json deeper{
        json_pack("[{s:s,s:s,s:o}]", "op", "replace", "path", "/a", "value", nested(K_CONF_MAX_LEVELS).release())};
    expect_refusal(parse(R"({"a":1})"), deeper,
                   R"(Operation 1 at "/a": the document would be nested more than 2048 levels deep)");
}

TEST(Apply, FollowsNoPathThatIsDeeperThanADocumentMayBe) {
    std::string path;
    for (size_t level = 0; level <= K_CONF_MAX_LEVELS; ++level) path += "/a";
    const Json deep{json_pack("[{s:s,s:s,s:i}]", "op", "add", "path", path.c_str(), "value", 1)};
    expect_refusal(parse("{}"), deep,
                   "Operation 1 at \"" + path + "\": the document would be nested more than 2048 levels deep");
}

// An array that costs 1024 times 1024 to walk, and as much more as it has nulls besides.
Json array_that_costs_a_mebi_and(size_t nulls) {
    Json row{json_array()};
    for (size_t i = 0; i < 1023; ++i) json_array_append_new(row.get(), json_null());
    Json rows{json_array()};
    for (size_t i = 0; i < 1023; ++i) json_array_append(rows.get(), row.get());
    for (size_t i = 0; i < 1023 + nulls; ++i) json_array_append_new(rows.get(), json_null());
    return rows;
}

// What operations may carry is that and what the patch itself costs: here the array of operations, the operation and
// its three texts.
TEST(Apply, CarriesAsMuchAsTheBoundAndNoMore) {
    const Json copy = parse(R"([{"op":"copy","from":"/a","path":"/b"}])");
    const Json most{json_pack("{s:o}", "a", array_that_costs_a_mebi_and(5).release())};
    EXPECT_NE(applied(most, copy), nullptr);
    const Json too_much{json_pack("{s:o}", "a", array_that_costs_a_mebi_and(6).release())};
    expect_refusal(too_much, copy, R"(Operation 1 at "/b": the operations copy and move too many values)");
}

// 64 copies of a name of a mebibyte are what operations may carry.
TEST(Apply, CountsLongNamesOfWhatIsCopied) {
    const Json base{json_object()};
    json_object_set_new(base.get(), "a", json_object());
    json_object_set_new(json_object_get(base.get(), "a"), std::string(size_t{1} << 20, 'n').c_str(), json_null());
    const Json copies{json_array()};
    for (int i = 0; i < 70; ++i)
        json_array_append_new(copies.get(), json_pack("{s:s,s:s,s:s}", "op", "copy", "from", "/a", "path", "/b"));
    const Errors err{k_err_new()};
    EXPECT_EQ(applied(base, copies, err.get()), nullptr);
    ASSERT_EQ(k_err_count(err.get()), 1u);
    EXPECT_STREQ(k_err_message(err.get(), 0), "Operation 65 at \"/b\": the operations copy and move too many values");
}

TEST(Apply, RefusesCopiesThatGrowWithoutBound) {
    Json bomb{json_array()};
    for (int i = 0; i < 100; ++i) {
        for (const char* path : {"/a", "/b"}) {
            json_array_append_new(bomb.get(), json_pack("{s:s,s:s,s:s}", "op", "copy", "from", "", "path", path));
        }
    }
    const Errors err{k_err_new()};
    EXPECT_EQ(applied(parse("{}"), bomb, err.get()), nullptr);
    ASSERT_EQ(k_err_count(err.get()), 1u);
    EXPECT_NE(std::string(k_err_message(err.get(), 0)).find("the operations copy and move too many values"),
              std::string::npos);
}

TEST(Apply, TakesADifferenceOfAnyLength) {
    Json base{json_array()};
    Json candidate{json_array()};
    for (int i = 0; i < 20000; ++i) {
        json_array_append_new(base.get(), json_integer(i));
        json_array_append_new(candidate.get(), json_pack("{s:i}", "number", i));
    }
    const Json difference = diff(base, candidate, K_CONF_JSON_PATCH);
    EXPECT_EQ(json_array_size(difference.get()), 20000u);
    EXPECT_TRUE(json_equal(applied(base, difference).get(), candidate.get()));
}

}  // namespace
