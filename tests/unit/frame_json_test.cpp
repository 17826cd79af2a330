// Owned values, reading and storing, and the ranges over members and elements.
#include "frame/json.h"

#include <climits>
#include <string>
#include <type_traits>
#include <vector>

#include "frame_memory.h"
#include "frame_tree.h"

namespace kcnvrt {
namespace {

using Names = std::vector<std::string>;

Names names_of(json_t* object) {
    Names names;
    for (const auto [name, value] : members(object)) names.emplace_back(name.view());
    return names;
}

Names sorted_names_of(json_t* object) {
    Names names;
    for (const auto [name, value] : SortedMembers{object}) names.emplace_back(name.view());
    return names;
}

TEST(Json, GivesItsReferenceBackAtTheEndOfItsScope) {
    const Json value = object();
    {
        const Json shared = share(value.get());
        EXPECT_EQ(value->refcount, 2u);
    }
    EXPECT_EQ(value->refcount, 1u);
}

TEST(Json, HandsItsReferenceOver) {
    Json value = object();
    json_t* const borrowed = value.get();
    const Json owner{value.release()};
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(owner.get(), borrowed);
    EXPECT_EQ(owner->refcount, 1u);
}

TEST(Json, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Json>);
    EXPECT_TRUE(std::is_move_constructible_v<Json>);
    EXPECT_EQ(sizeof(Json), sizeof(json_t*));
}

TEST(Key, KnowsItsLength) {
    constexpr Key literal = "ifname_l2";
    static_assert(literal.length() == 9);
    const char* const text = "wan10";
    const Key beginning{text, 4};
    EXPECT_EQ(beginning.view(), "wan1");
    EXPECT_TRUE(beginning == Key{"wan1"});
    EXPECT_FALSE(beginning == Key{"wan10"});
}

TEST(Decimal, IsTheTextOfEveryNumber) {
    const struct {
        int64_t number;
        const char* text;
    } rows[] = {{0, "0"},
                {7, "7"},
                {-1, "-1"},
                {10, "10"},
                {65535, "65535"},
                {INT64_MAX, "9223372036854775807"},
                {INT64_MIN, "-9223372036854775808"}};
    for (const auto& row : rows) {
        const Decimal decimal{row.number};
        EXPECT_STREQ(decimal.text(), row.text);
        EXPECT_EQ(decimal.view(), row.text);
        EXPECT_EQ(decimal.key().view(), row.text);
    }
}

TEST(Make, EveryKindOfValue) {
    EXPECT_EQ(text(object()), "{}");
    EXPECT_EQ(text(array()), "[]");
    EXPECT_EQ(text(null()), "null");
    EXPECT_EQ(text(integer(-5)), "-5");
    EXPECT_EQ(text(boolean(true)), "true");
    EXPECT_EQ(text(boolean(false)), "false");
    EXPECT_EQ(text(string("a")), "'a'");
    EXPECT_EQ(text(string(Key{"abc", 2})), "'ab'");
    EXPECT_EQ(text(string("")), "''");
}

TEST(Make, TextThatIsNotUtf8IsNoCheckedString) {
    EXPECT_EQ(text(checked_string("a")), "'a'");
    EXPECT_EQ(checked_string("\xff"), nullptr);
    EXPECT_EQ(checked_string("a\xff"), nullptr);
    EXPECT_EQ(checked_string(nullptr), nullptr);
}

TEST(Copy, ShallowSharesTheMembers) {
    const Json original = tree("{'a': {'b': 1}}");
    const Json shallow = shallow_copy(original.get());
    EXPECT_NE(shallow.get(), original.get());
    EXPECT_EQ(get(shallow.get(), "a"), get(original.get(), "a"));
}

TEST(Get, FindsAMemberByItsWholeName) {
    const Json object = tree("{'wan': 1, 'wan1': 2, '': 3, 'none': null}");
    EXPECT_EQ(text(get(object.get(), "wan")), "1");
    EXPECT_EQ(text(get(object.get(), {"wan10", 4})), "2");
    EXPECT_EQ(text(get(object.get(), "")), "3");
    EXPECT_EQ(text(get(object.get(), "none")), "null");
    EXPECT_EQ(get(object.get(), "wa"), nullptr);
    EXPECT_TRUE(has(object.get(), "none"));
    EXPECT_FALSE(has(object.get(), "nothing"));
}

TEST(Get, AWrongTypedContainerIsAnEmptyOne) {
    for (const char* const written : {"[1]", "'a'", "1", "1.5", "true", "null"}) {
        const Json value = tree(written);
        EXPECT_EQ(get(value.get(), "a"), nullptr) << written;
        EXPECT_TRUE(names_of(value.get()).empty()) << written;
    }
    EXPECT_EQ(get(nullptr, "a"), nullptr);
    EXPECT_TRUE(names_of(nullptr).empty());
}

TEST(Text, IsOnlyThatOfAString) {
    const Json object = tree("{'a': 'x', 'b': '', 'c': 1, 'd': null}");
    EXPECT_STREQ(text_of(object.get(), "a"), "x");
    EXPECT_STREQ(text_of(object.get(), "b"), "");
    EXPECT_EQ(text_of(object.get(), "c"), nullptr);
    EXPECT_EQ(text_of(object.get(), "d"), nullptr);
    EXPECT_EQ(text_of(object.get(), "e"), nullptr);
    EXPECT_EQ(view_of(get(object.get(), "a")), "x");
    EXPECT_EQ(view_of(get(object.get(), "c")), "");
    EXPECT_EQ(view_of(nullptr), "");
}

TEST(Text, IsNotThatOfAnotherType) {
    EXPECT_TRUE(is_text(tree("'user'").get(), "user"));
    EXPECT_FALSE(is_text(tree("'users'").get(), "user"));
    EXPECT_TRUE(is_text(tree("''").get(), ""));
    EXPECT_FALSE(is_text(tree("null").get(), ""));
    EXPECT_FALSE(is_text(nullptr, ""));
}

TEST(Size, IsThatOfAnObjectOrAnArray) {
    const struct {
        const char* value;
        size_t size;
    } rows[] = {{"{}", 0}, {"{'a': 1}", 1}, {"[]", 0}, {"[1, null]", 2}, {"'text'", 0}, {"null", 0}, {"5", 0}};
    for (const auto& row : rows) {
        const Json value = tree(row.value);
        EXPECT_EQ(size_of(value.get()), row.size) << row.value;
        EXPECT_EQ(is_empty(value.get()), row.size == 0) << row.value;
    }
    EXPECT_TRUE(is_empty(nullptr));
}

TEST(Set, ReplacesAMemberInItsPlace) {
    const Json object = tree("{'a': 1, 'b': 2}");
    set(object.get(), "a", integer(3));
    set(object.get(), "c", integer(4));
    EXPECT_EQ(text(object), "{'a':3,'b':2,'c':4}");
}

TEST(Set, AnAbsentValueStoresNothing) {
    const Json object = tree("{'a': 1}");
    set(object.get(), "a", nullptr);
    set(object.get(), "b", nullptr);
    carry(object.get(), "a", nullptr);
    EXPECT_EQ(text(object), "{'a':1}");
}

TEST(Set, AValueWithNowhereToGoIsReleased) {
    const Json value = tree("{'a': 1}");
    const Json array = kcnvrt::array();
    set(array.get(), "a", share(value.get()));
    set(nullptr, "a", share(value.get()));
    append(nullptr, share(value.get()));
    EXPECT_EQ(value->refcount, 1u);
    EXPECT_EQ(text(array), "[]");
}

TEST(Set, TakesNamesThatAreNotUtf8) {
    const Json object = kcnvrt::object();
    set(object.get(), "\xff", integer(1));
    EXPECT_EQ(text(get(object.get(), "\xff")), "1");
}

TEST(Carry, SharesTheValue) {
    const Json source = tree("{'a': {'b': 1}}");
    const Json destination = object();
    carry(destination.get(), "c", get(source.get(), "a"));
    EXPECT_EQ(get(destination.get(), "c"), get(source.get(), "a"));
    EXPECT_EQ(get(source.get(), "a")->refcount, 2u);
}

TEST(SetNamed, StoresUnderTheTextOfAString) {
    const Json object = kcnvrt::object();
    set_named(object.get(), tree("'wan1'").get(), integer(1));
    set_named(object.get(), tree("''").get(), integer(2));
    EXPECT_EQ(text(object), "{'wan1':1,'':2}");
}

TEST(SetNamed, AnyOtherValueNamesNothing) {
    const Json object = kcnvrt::object();
    const Json value = tree("{'a': 1}");
    for (const char* const written : {"1", "1.5", "null", "true", "['a']", "{'a': 'b'}"})
        set_named(object.get(), tree(written).get(), share(value.get()));
    set_named(object.get(), nullptr, share(value.get()));
    EXPECT_EQ(text(object), "{}");
    EXPECT_EQ(value->refcount, 1u);
}

TEST(Append, KeepsTheOrder) {
    const Json array = kcnvrt::array();
    const Json shared = tree("{'a': 1}");
    append(array.get(), integer(1));
    append_shared(array.get(), shared.get());
    append(array.get(), nullptr);
    append_shared(array.get(), nullptr);
    EXPECT_EQ(text(array), "[1,{'a':1}]");
    EXPECT_EQ(json_array_get(array.get(), 1), shared.get());
}

TEST(Members, ComeInTheObjectsOwnOrder) {
    const Json object = tree("{'b': 1, 'a': 2, '10': 3, '': 4}");
    EXPECT_EQ(names_of(object.get()), (Names{"b", "a", "10", ""}));
    int sum = 0;
    for (const auto [name, value] : members(object.get())) sum = sum * 10 + static_cast<int>(json_integer_value(value));
    EXPECT_EQ(sum, 1234);
}

TEST(Elements, AreCountedFromOne) {
    const Json array = tree("['a', null, 3]");
    std::string walk;
    for (const auto [number, value] : elements(array.get())) walk += std::to_string(number) + text(value) + " ";
    EXPECT_EQ(walk, "1'a' 2null 33 ");
}

TEST(Elements, OfAnythingButAnArrayAreNone) {
    for (const char* const written : {"{'a': 1}", "'abc'", "3", "null", "[]"}) {
        const Json value = tree(written);
        for (const Element& element : elements(value.get())) ADD_FAILURE() << written << " has " << element.number;
    }
    for (const Element& element : elements(nullptr)) ADD_FAILURE() << "an absent array has " << element.number;
}

TEST(SortedMembers, ComeInByteOrder) {
    const Json object = tree("{'2': 1, '10': 2, '1': 3, 'é': 4, 'Z': 5, 'a': 6, '': 7, 'wan1': 8, 'wan': 9}");
    EXPECT_EQ(sorted_names_of(object.get()), (Names{"", "1", "10", "2", "Z", "a", "wan", "wan1", "é"}));
}

TEST(SortedMembers, KeepEachValueWithItsName) {
    const Json object = tree("{'c': 3, 'a': 1, 'b': 2}");
    std::string walk;
    for (const auto [name, value] : SortedMembers{object.get()}) walk += std::string{name.view()} + text(value);
    EXPECT_EQ(walk, "a1b2c3");
    EXPECT_EQ(text(object), "{'c':3,'a':1,'b':2}");
}

Json object_of_size(size_t size) {
    Json object = kcnvrt::object();
    for (size_t i = size; i > 0; --i) set(object.get(), Decimal{static_cast<int64_t>(1000 + i)}, integer(1));
    return object;
}

TEST(SortedMembers, AreAllThereAtEverySize) {
    for (const size_t size : {0u, 1u, 31u, 32u, 33u, 64u, 500u}) {
        const Json object = object_of_size(size);
        const SortedMembers sorted{object.get()};
        ASSERT_EQ(sorted.count(), size);
        EXPECT_FALSE(sorted.failed());
        int64_t expected = 1001;
        for (const Member& member : sorted) EXPECT_EQ(member.name.view(), Decimal{expected++}.view());
    }
}

TEST(SortedMembers, OfAnythingButAnObjectAreNone) {
    EXPECT_TRUE(sorted_names_of(nullptr).empty());
    EXPECT_TRUE(sorted_names_of(tree("['a']").get()).empty());
}

TEST(SortedMembers, SayWhenMemoryRanOut) {
    const Json object = object_of_size(33);
    const OutOfMemory nothing_left{0};
    const SortedMembers sorted{object.get()};
    EXPECT_TRUE(sorted.failed());
    EXPECT_EQ(sorted.count(), 0u);
    EXPECT_EQ(sorted.begin(), sorted.end());
}

TEST(SortedMembers, OfASmallObjectNeedNoMemory) {
    const Json object = object_of_size(32);
    const OutOfMemory nothing_left{0};
    const SortedMembers sorted{object.get()};
    EXPECT_FALSE(sorted.failed());
    EXPECT_EQ(sorted.count(), 32u);
}

}  // namespace
}  // namespace kcnvrt
