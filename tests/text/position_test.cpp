// Where things stand in a text.
#include "json/position.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kcnvrt::text {

namespace {

struct Row {
    std::string_view text;
    std::string_view pointer;
    std::string_view value;  // what stands there
    size_t line;             // 0: nothing
    size_t column;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.text << " at " << row.pointer;
}

class Finds : public testing::TestWithParam<Row> {};

TEST_P(Finds, Value) {
    const Row& row = GetParam();
    Sought sought{row.pointer, {}, 0};
    ASSERT_TRUE(find_values(row.text, &sought, 1));
    EXPECT_EQ(row.line, sought.spot.line);
    EXPECT_EQ(row.column, sought.spot.column);
    EXPECT_EQ(row.value, row.text.substr(sought.spot.offset, sought.length));
}

constexpr std::string_view kHome =
    "{\r\n"
    "\t\"ifaces\": {\"eth4\": {\"auth\": \"4\", \"on\": true}},\n"
    "  \"l\u00e4nder \U0001f600\": [1, [], {\"\u00e9\": -2.5e3}] , \"x\":\n"
    "null\n"
    "}";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Position, Finds, testing::Values(
    Row{kHome, "", kHome, 1, 1},
    Row{kHome, "/ifaces", R"({"eth4": {"auth": "4", "on": true}})", 2, 12},
    Row{kHome, "/ifaces/eth4/auth", "\"4\"", 2, 30},
    Row{kHome, "/ifaces/eth4/on", "true", 2, 41},
    Row{kHome, "/l\u00e4nder \U0001f600", "[1, [], {\"\u00e9\": -2.5e3}]", 3, 15},
    Row{kHome, "/l\u00e4nder \U0001f600/0", "1", 3, 16},
    Row{kHome, "/l\u00e4nder \U0001f600/1", "[]", 3, 19},
    Row{kHome, "/l\u00e4nder \U0001f600/2/\u00e9", "-2.5e3", 3, 29},
    Row{kHome, "/x", "null", 4, 1},
    Row{kHome, "/X", "", 0, 0},
    Row{kHome, "/ifaces/eth4/auth/0", "", 0, 0},
    Row{kHome, "/ifaces/", "", 0, 0},
    Row{kHome, "ifaces", "", 0, 0},
    Row{kHome, "/l\u00e4nder \U0001f600/3", "", 0, 0},
    Row{kHome, "/l\u00e4nder \U0001f600/-", "", 0, 0},
    Row{kHome, "/l\u00e4nder \U0001f600/00", "", 0, 0},
    Row{kHome, "/l\u00e4nder \U0001f600/+1", "", 0, 0},
    Row{" 12 ", "", "12", 1, 2},
    Row{"\n\"a\"", "", "\"a\"", 2, 1},
    Row{"", "", "", 0, 0},
    Row{R"({"": {"": 1}})", "/", R"({"": 1})", 1, 6},
    Row{R"({"": {"": 1}})", "//", "1", 1, 11},
    Row{R"({"a/b": 1, "m~n": 2, "~1": 3})", "/a~1b", "1", 1, 9},
    Row{R"({"a/b": 1, "m~n": 2, "~1": 3})", "/m~0n", "2", 1, 19},
    Row{R"({"a/b": 1, "m~n": 2, "~1": 3})", "/~01", "3", 1, 28},
    Row{R"({"a/b": 1, "m~n": 2, "~1": 3})", "/a/b", "", 0, 0},
    Row{R"({"a\u002fb\"\\\t\u007e\ud83d\ude00": 1})", "/a~1b\"\\\t~0\U0001f600", "1", 1, 38},
    Row{R"({"a": "}{][\",:\\", "b": 2})", "/b", "2", 1, 26},
    Row{R"({"a": {"b": "\\"}, "c": "\"}"})", "/c", R"("\"}")", 1, 25}));
// clang-format on

}  // namespace

TEST(Position, ASpotIsCountedInLinesAndCodePoints) {
    constexpr std::string_view kText = "a\u00e9\U0001f600\tb\r\n\nc";
    const auto at = [kText](size_t offset, size_t line, size_t column) {
        const Spot spot = spot_at(kText, offset);
        EXPECT_EQ(line, spot.line) << offset;
        EXPECT_EQ(column, spot.column) << offset;
    };
    at(0, 1, 1);
    at(1, 1, 2);
    at(3, 1, 3);
    at(7, 1, 4);
    at(8, 1, 5);
    at(9, 1, 6);
    at(10, 1, 7);
    at(11, 2, 1);
    at(12, 3, 1);
    at(13, 3, 2);
    EXPECT_EQ(13U, spot_at(kText, 1000).offset);
    EXPECT_EQ(2U, spot_at(kText, 1000).column);
}

TEST(Position, ManyAreFoundInOneWalkInAnyOrder) {
    constexpr size_t kCount = 20000;
    std::string text = "{\"list\": [";
    for (size_t i = 0; i < kCount; ++i)
        text += (i == 0 ? "" : ",\n") + std::string{"{\"v\":"} + std::to_string(i) + "}";
    text += "]}";
    std::vector<std::string> pointers;
    for (size_t i = 0; i < kCount; ++i) pointers.push_back("/list/" + std::to_string(i * 7919 % kCount) + "/v");
    pointers.push_back("/list/5/v");
    pointers.push_back("/list/20000/v");
    std::vector<Sought> sought;
    for (const std::string& pointer : pointers) sought.push_back({pointer, {}, 0});

    ASSERT_TRUE(find_values(text, sought.data(), sought.size()));
    for (size_t i = 0; i < kCount; ++i) {
        const size_t number = i * 7919 % kCount;
        ASSERT_EQ(std::to_string(number), text.substr(sought[i].spot.offset, sought[i].length));
        ASSERT_EQ(number + 1, sought[i].spot.line);
        ASSERT_EQ(number == 0 ? 16U : 6U, sought[i].spot.column);
    }
    EXPECT_EQ(6U, sought[kCount].spot.line);
    EXPECT_EQ(0U, sought[kCount + 1].spot.line);
}

TEST(Position, ATextThatIsNoJsonIsNotWalkedBeyondItsEnd) {
    for (const std::string_view text : {"{", "[", "{\"", "{\"a", "{\"a\"", "{\"a\":", "{\"a\":1", "{\"a\":\"", "[1,",
                                        "[[", "{\"a\":[", "}", "]", ",", "{,}", "[,]", "{\"a\\", "\"\\"}) {
        std::vector<Sought> sought{{"/a", {}, 0}, {"/a/0", {}, 0}, {"/0", {}, 0}, {"/0/0", {}, 0}};
        ASSERT_TRUE(find_values(text, sought.data(), sought.size()));
        for (const Sought& each : sought) EXPECT_LE(each.spot.offset + each.length, text.size()) << text;
    }
}

TEST(Position, ATextOfAnyDepthIsWalked) {
    const std::string text = std::string(100000, '[') + std::string(100000, ']');
    std::string pointer;
    for (int i = 0; i < 50000; ++i) pointer += "/0";
    std::vector<Sought> sought{{pointer, {}, 0}, {"/0", {}, 0}};
    ASSERT_TRUE(find_values(text, sought.data(), sought.size()));
    EXPECT_EQ(0U, sought[0].spot.line) << "deeper than any text that is read";
    EXPECT_EQ(2U, sought[1].spot.column);
    EXPECT_EQ(text.size() - 2, sought[1].length);
}

}  // namespace kcnvrt::text
