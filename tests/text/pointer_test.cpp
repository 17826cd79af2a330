// Following JSON Pointers through trees, those with escapes too.
#include "json/pointer.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "owned.h"

using namespace kcnvrt;
using namespace kcnvrt::text;

namespace {

class Pointer : public testing::Test {
protected:
    json_int_t number_at(std::string_view pointer) { return json_integer_value(value_at(root.get(), pointer)); }

    Json root{json_loads(R"({"a": {"": 1, "b/c": 2, "d~e": 3, "~1": 4, "f": [5, [6]]}, "~": 7, "/": 8, "x~1": 9})", 0,
                         nullptr)};
};

TEST_F(Pointer, LeadsToMembersAndElements) {
    EXPECT_EQ(value_at(root.get(), ""), root.get());
    EXPECT_EQ(number_at("/a/"), 1);
    EXPECT_EQ(number_at("/a/f/0"), 5);
    EXPECT_EQ(number_at("/a/f/1/0"), 6);
}

TEST_F(Pointer, EscapesTildesAndSlashes) {
    EXPECT_EQ(number_at("/a/b~1c"), 2);
    EXPECT_EQ(number_at("/a/d~0e"), 3);
    EXPECT_EQ(number_at("/a/~01"), 4);
    EXPECT_EQ(number_at("/~0"), 7);
    EXPECT_EQ(number_at("/~1"), 8);
    EXPECT_EQ(number_at("/x~01"), 9);
}

TEST_F(Pointer, LeadsNowhereElse) {
    for (const char* pointer : {"/b", "/a/f/2", "/a/f/00", "/a/f/-", "/a/f/x", "/a/f/1/0/0", "/a/~2", "/a/~", "/a/~0",
                                "/a/d~0", "/a/d~0ee", "/~00", "/~0~0", "/a/f/99999999999999999999"})
        EXPECT_EQ(value_at(root.get(), pointer), nullptr) << pointer;
}

TEST_F(Pointer, ComesApart) {
    EXPECT_EQ(parent_of("/a/b~1c"), "/a");
    EXPECT_EQ(last_token_of("/a/b~1c"), "b~1c");
    EXPECT_EQ(parent_of("/"), "");
    EXPECT_EQ(last_token_of("/"), "");
    EXPECT_EQ(parent_of(""), "");
    EXPECT_EQ(last_token_of(""), "");
    EXPECT_EQ(index_of("12"), 12u);
    EXPECT_EQ(index_of("012"), SIZE_MAX);
}

TEST_F(Pointer, StandsInOrderTokenByToken) {
    const char* const in_order[] = {"", "/1", "/1/z", "/2", "/10", "/10/1", "/", "/1a", "/a", "/a/b", "/ab", "/b"};
    for (const char* const& left : in_order)
        for (const char* const& right : in_order)
            EXPECT_EQ(compare_pointers(left, right) < 0, &left < &right) << left << " and " << right;
    EXPECT_EQ(compare_pointers("/a/1", "/a/1"), 0);
}

TEST_F(Pointer, LeadsIntoAValue) {
    EXPECT_TRUE(is_inside("/a/b", "/a"));
    EXPECT_TRUE(is_inside("/a", "/a"));
    EXPECT_TRUE(is_inside("/a", ""));
    EXPECT_FALSE(is_inside("/ab", "/a"));
    EXPECT_FALSE(is_inside("/a", "/a/b"));
}

TEST_F(Pointer, ReplacesWhatIsThere) {
    json_t* const a = value_at(root.get(), "/a");
    const Json ten{json_integer(10)};
    EXPECT_TRUE(replace_child(a, "b~1c", ten.get()));
    EXPECT_TRUE(replace_child(value_at(a, "/f"), "0", ten.get()));
    EXPECT_FALSE(replace_child(a, "~0", ten.get()));
    EXPECT_FALSE(replace_child(value_at(a, "/f"), "2", ten.get()));
    EXPECT_EQ(number_at("/a/b~1c"), 10);
    EXPECT_EQ(number_at("/a/f/0"), 10);
}

TEST_F(Pointer, RemovesMembers) {
    json_t* const a = value_at(root.get(), "/a");
    EXPECT_TRUE(remove_member(a, "b~1c"));
    EXPECT_TRUE(remove_member(a, "f"));
    EXPECT_FALSE(remove_member(a, "b~1c"));
    EXPECT_FALSE(remove_member(a, "x"));
    EXPECT_EQ(json_object_size(a), 3u);
}

}  // namespace
