// Tables of names and numbers: both directions, soundness, and the lists in messages.
#include "frame/named_number.h"

#include <gtest/gtest.h>

#include <string>

namespace kcnvrt {
namespace {

// clang-format off
constexpr NamedNumber<6> kColours[] = {
    {"red",     0},
    {"green",  10},
    {"blue",  255},
};

constexpr NamedNumber<4> kOne[] = {
    {"one",  1},
};

constexpr NamedNumber<4> kSameName[] = {
    {"off",  0},
    {"off",  1},
};

constexpr NamedNumber<4> kSameNumber[] = {
    {"off",  0},
    {"on",   0},
};

constexpr NamedNumber<4> kSwitch[] = {
    {"off",  false},
    {"on",   true},
};

constexpr NamedNumber<4> kTwoAndOne[] = {
    {"two",  2},
    {"one",  1},
};
// clang-format on

TEST(NamedNumber, IsFoundByNameAndByNumber) {
    for (const auto& colour : kColours) {
        EXPECT_EQ(by_name(kColours, colour.name), &colour);
        EXPECT_EQ(by_number(kColours, colour.number), &colour);
    }
}

TEST(NamedNumber, IsNotFoundByAnythingElse) {
    for (const char* name : {"", "Red", "re", "redd", "0"}) EXPECT_EQ(by_name(kColours, name), nullptr) << name;
    EXPECT_EQ(by_name(kColours, std::string_view("red\0", 4)), nullptr);
    for (const int64_t number : {int64_t{-1}, int64_t{1}, int64_t{256}, INT64_MIN, INT64_MAX})
        EXPECT_EQ(by_number(kColours, number), nullptr) << number;
}

TEST(NamedNumber, IsFoundByItsDecimalTextAlone) {
    EXPECT_EQ(by_decimal(kColours, "0"), &kColours[0]);
    EXPECT_EQ(by_decimal(kColours, "10"), &kColours[1]);
    EXPECT_EQ(by_decimal(kColours, "255"), &kColours[2]);
    for (const char* text : {"", "00", "010", "+10", " 10", "10 ", "1", "-0", "red"})
        EXPECT_EQ(by_decimal(kColours, text), nullptr) << text;
}

TEST(NamedNumber, LeadsBackUnlessANameOrANumberStandsTwice) {
    EXPECT_TRUE(is_one_to_one(kColours));
    EXPECT_FALSE(is_one_to_one(kSameName));
    EXPECT_FALSE(is_one_to_one(kSameNumber));
}

TEST(NamedNumber, StandsForABooleanWhereThereAreFalseAndTrue) {
    EXPECT_TRUE(is_one_to_one_with_booleans(kSwitch));
    EXPECT_FALSE(is_one_to_one_with_booleans(kSameName));
    EXPECT_FALSE(is_one_to_one_with_booleans(kSameNumber));
    EXPECT_FALSE(is_one_to_one_with_booleans(kTwoAndOne));
}

TEST(NamedNumber, IsListedAsMessagesSayIt) {
    EXPECT_STREQ((kNamesOf<kColours, "\"", ", ">.text()), "\"red\", \"green\", \"blue\"");
    EXPECT_STREQ((kNamesOf<kColours, "", " or ">.text()), "red or green or blue");
    EXPECT_STREQ((kNumbersOf<kColours, "", ",">.text()), "0,10,255");
    EXPECT_STREQ((kNumbersOf<kColours, "\"", ",">.text()), "\"0\",\"10\",\"255\"");
    EXPECT_STREQ((kNamesOf<kOne, "'", ", ">.text()), "'one'");
}

TEST(NamedNumber, IsListedWithoutAByteTooMany) {
    EXPECT_EQ(sizeof(kNamesOf<kOne, "'", ", ">), sizeof "'one'");
    EXPECT_EQ(sizeof(kNumbersOf<kColours, "", ",">), sizeof "0,10,255");
}

TEST(Listing, WritesEveryByteInDecimal) {
    for (int number = 0; number <= 255; ++number)
        EXPECT_EQ(ByteDigits{static_cast<uint8_t>(number)}.view(), std::to_string(number));
}

TEST(Listing, LeavesOutWhatIsNotAdded) {
    constexpr auto kEven = listing<"", "/">([](auto add) {
        for (const auto& colour : kColours)
            if (colour.number % 2 == 0) add(colour.name);
    });
    constexpr auto kNone = listing<"'", "/">([](auto) {});
    EXPECT_STREQ(kEven.text(), "red/green");
    EXPECT_STREQ(kNone.text(), "");
}

}  // namespace
}  // namespace kcnvrt
