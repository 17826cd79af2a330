// What the reader accepts and refuses, and where it says that a problem is.
#include "json/reader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tree.h"

namespace kcnvrt::text {

namespace {

constexpr ReadOptions kContainers = {};
constexpr ReadOptions kAnyValue = {.any_value = true, .nul_in_strings = true};

std::string repeated(std::string_view piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += piece;
    return text;
}

// What Jansson's printer makes of the tree.
std::string read_back(std::string_view text, ReadOptions options = kContainers) {
    ReadError error;
    const Json tree{read(text, options, error)};
    return tree ? dumped(tree.get(), JSON_COMPACT) : "refused: " + std::string{error.text};
}

struct Accepted {
    std::string text;
    std::string result;
    bool is_sure;  // without Jansson's parser
};

void PrintTo(const Accepted& row, std::ostream* out) {
    *out << row.text.substr(0, 60);
}

class Accepts : public testing::TestWithParam<Accepted> {};

TEST_P(Accepts, Text) {
    EXPECT_EQ(GetParam().result, read_back(GetParam().text));
    EXPECT_EQ(GetParam().is_sure, Json{read_if_sure(GetParam().text)} != nullptr);
    EXPECT_EQ(GetParam().result, read_back(as_large(GetParam().text)));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Reader, Accepts, testing::Values(
    Accepted{"{}", "{}", true},
    Accepted{"[]", "[]", true},
    Accepted{" \t\r\n{ \n\"a\"\t:\r[ ] , \"\" : { } } \n", R"({"a":[],"":{}})", true},
    Accepted{R"([true,false,null])", "[true,false,null]", true},
    Accepted{"[-0,0,-1,10]", "[0,0,-1,10]", true},
    Accepted{"[999999999999999999,-999999999999999999]", "[999999999999999999,-999999999999999999]", true},
    Accepted{"[9223372036854775807,-9223372036854775808]", "[9223372036854775807,-9223372036854775808]", false},
    Accepted{"[-0.0,1.0,1e5,1E-2,0.5]", "[-0.0,1.0,100000.0,0.01,0.5]", true},
    Accepted{"[1e-400]", "[0.0]", true},
    Accepted{R"(["\"\\\/\b\f\n\r\t"])", R"(["\"\\/\b\f\n\r\t"])", true},
    Accepted{R"(["\u0041\u00e9\u20AC\ud83d\ude00\uFFFF"])", "[\"A\u00e9\u20ac\U0001f600\uffff\"]", true},
    Accepted{"[\"\x7f\u00e9\u20ac\U0001f600\"]", "[\"\x7f\u00e9\u20ac\U0001f600\"]", true},
    Accepted{R"(["12345678","1234567","123456789\u0001","1234567\"8"])",
             R"(["12345678","1234567","123456789\u0001","1234567\"8"])", true},
    Accepted{R"({"a\u0062":1})", R"({"ab":1})", false},
    Accepted{"{\"\u00e9\":1}", "{\"\u00e9\":1}", true},
    Accepted{repeated("[", 2048) + repeated("]", 2048), repeated("[", 2048) + repeated("]", 2048), true},
    Accepted{repeated("[", 2047) + "0" + repeated("]", 2047), repeated("[", 2047) + "0" + repeated("]", 2047), true},
    Accepted{repeated("{\"a\":", 2047) + "{}" + repeated("}", 2047),
             repeated("{\"a\":", 2047) + "{}" + repeated("}", 2047), true}));
// clang-format on

using Kind = ReadErrorKind;

struct Refused {
    std::string text;
    Kind kind;
    size_t line;
    size_t column;
    ReadOptions options = kContainers;
};

void PrintTo(const Refused& row, std::ostream* out) {
    *out << row.text.substr(0, 60);
}

class Refuses : public testing::TestWithParam<Refused> {};

TEST_P(Refuses, Text) {
    const Refused& row = GetParam();
    ReadError error;
    EXPECT_EQ(nullptr, Json{read(row.text, row.options, error)});
    EXPECT_EQ(row.kind, error.kind) << error.text;
    EXPECT_EQ(row.line, error.spot.line);
    EXPECT_EQ(row.column, error.spot.column);
    EXPECT_STRNE("", error.text);
}

std::string with_nul(const char* before, const char* after) {
    return std::string{before} + '\0' + after;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Reader, Refuses, testing::Values(
    //      text                                     kind                  line column
    Refused{"",                                      Kind::kEmpty,          1, 1},
    Refused{" \n ",                                  Kind::kEmpty,          2, 2},
    Refused{"1",                                     Kind::kNotContainer,   1, 1},
    Refused{"\"text\"",                              Kind::kNotContainer,   1, 1},
    Refused{" null ",                                Kind::kNotContainer,   1, 2},
    Refused{"<html>",                                Kind::kSyntax,         1, 1},
    Refused{"\xEF\xBB\xBF{}",                        Kind::kSyntax,         1, 1},
    Refused{"\x1f\x8b\x08",                          Kind::kSyntax,         1, 1},
    Refused{"{",                                     Kind::kEndOfText,      1, 2},
    Refused{"{\"a\":1,\n",                           Kind::kEndOfText,      2, 1},
    Refused{"[\"a",                                  Kind::kEndOfText,      1, 4},
    Refused{"[\"a]",                                 Kind::kEndOfText,      1, 5},
    Refused{"{} x",                                  Kind::kTrailing,       1, 4},
    Refused{"{}\n{}",                                Kind::kTrailing,       2, 1},
    Refused{"[1,]",                                  Kind::kSyntax,         1, 4},
    Refused{"[1 2]",                                 Kind::kSyntax,         1, 4},
    Refused{"{\"a\" 1}",                             Kind::kSyntax,         1, 6},
    Refused{"{a:1}",                                 Kind::kSyntax,         1, 2},
    Refused{"[\n\t\t01]",                            Kind::kSyntax,         2, 3},
    Refused{"[1.]",                                  Kind::kSyntax,         1, 2},
    Refused{"[tru]",                                 Kind::kSyntax,         1, 2},
    Refused{"[truex]",                               Kind::kSyntax,         1, 2},
    Refused{"[NaN]",                                 Kind::kSyntax,         1, 2},
    Refused{"[\"a\nb\"]",                            Kind::kSyntax,         1, 4},
    Refused{"[\"a\tb\"]",                            Kind::kSyntax,         1, 4},
    Refused{"[\"ab\\qb\"]",                          Kind::kSyntax,         1, 5},
    Refused{"[\"\\u12g4\"]",                         Kind::kSyntax,         1, 3},
    Refused{"[0, \"\\ud800\"]",                      Kind::kSyntax,         1, 5},
    Refused{"[0, \"\\udc00\"]",                      Kind::kSyntax,         1, 5},
    Refused{"[\"\\ud800\\u0041\"]",                  Kind::kSyntax,         1, 2},
    Refused{"[\"\u20ac\xC0\x80\"]",                  Kind::kInvalidUtf8,    1, 4},
    Refused{"[\"\xED\xA0\x80\"]",                    Kind::kInvalidUtf8,    1, 3},
    Refused{"[\"\\u0000\"]",                         Kind::kEscapedNul,     1, 2},
    Refused{"{\"\\u0000\":1}",                       Kind::kEscapedNul,     1, 2},
    Refused{"{\"\\u0000\":1}",                       Kind::kEscapedNul,     1, 2, kAnyValue},
    Refused{"{\"a\":1,\n \"a\":2}",                  Kind::kDuplicate,      2, 2},
    Refused{"{\"a\":1,\"\\u0061\":2}",               Kind::kDuplicate,      1, 8},
    Refused{"{\"\u20ac\":{\"b\":1,\"c\":2,\"b\":3}}", Kind::kDuplicate,     1, 19},
    Refused{"[9223372036854775808]",                 Kind::kNumberTooLarge, 1, 2},
    Refused{"[-9223372036854775809]",                Kind::kNumberTooLarge, 1, 2},
    Refused{"[1e400]",                               Kind::kNumberTooLarge, 1, 2},
    Refused{with_nul("", ""),                        Kind::kByteNul,        1, 1},
    Refused{with_nul("123", ""),                     Kind::kByteNul,        1, 4, kAnyValue},
    Refused{with_nul("[true", "]"),                  Kind::kByteNul,        1, 6},
    Refused{with_nul("{}", ""),                      Kind::kByteNul,        1, 3},
    Refused{with_nul("[\"\\\"\",\n1", ",\"a\"]"),    Kind::kByteNul,        2, 2},
    Refused{with_nul("[\"", "\"]"),                  Kind::kSyntax,         1, 3},
    Refused{repeated("[", 2049) + repeated("]", 2049), Kind::kTooDeep,      1, 2049},
    Refused{repeated("[", 2048) + "0" + repeated("]", 2048), Kind::kTooDeep, 1, 2049},
    Refused{repeated("{\"a\":", 2048) + "1" + repeated("}", 2048), Kind::kTooDeep, 1, 2048 * 5 + 1}));
// clang-format on

}  // namespace

TEST(Reader, AnyValueIsAsked) {
    EXPECT_EQ("1", read_back("1", kAnyValue));
    EXPECT_EQ("\"a\\u0000b\"", read_back(R"("a\u0000b")", kAnyValue));
    EXPECT_EQ(R"({"a":"\u0000"})", read_back(R"({"a":"\u0000"})", kAnyValue));
}

bool is_one_node(std::string_view text, size_t first, size_t second) {
    const Json tree{read_if_sure(text)};
    return json_array_get(tree.get(), first) == json_array_get(tree.get(), second);
}

TEST(Reader, EqualLeavesOfALargeTextAreOneNode) {
    EXPECT_TRUE(is_one_node(as_large(R"(["Enabled", 1, "Enabled"])"), 0, 2));
    EXPECT_TRUE(is_one_node(as_large(R"(["", {"a": ""}, ""])"), 0, 2));
    EXPECT_TRUE(is_one_node(as_large(R"(["sixteen letters!", "sixteen letters!"])"), 0, 1));
    EXPECT_FALSE(is_one_node(as_large(R"(["seventeen letters", "seventeen letters"])"), 0, 1));
    EXPECT_TRUE(is_one_node(as_large("[-7, 7, -7]"), 0, 2));
    EXPECT_FALSE(is_one_node(R"(["Enabled", 1, "Enabled"])", 0, 2));
    EXPECT_FALSE(is_one_node("[-7, -7]", 0, 1));
}

TEST(Reader, OtherLeavesOfALargeTextAreOtherNodes) {
    std::string text = "[";
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 3000; ++i) {
            const std::string number = std::to_string(i * 1013 % 4001 - 2000);
            text += number + ",\"" + number + "\",\"12345678" + number + "\",\"" + number + "12345678\",";
        }
    for (char letter = 'a'; letter <= 'z'; ++letter)
        for (size_t length = 0; length <= 17; ++length) text += '"' + std::string(length, letter) + "\",";
    text += "0]";
    EXPECT_EQ(text, read_back(as_large(text)));
}

TEST(Reader, ALeafThatIsReplacedIsNotUsedAgain) {
    ReadError error;
    EXPECT_EQ(nullptr, Json{read(as_large(R"({"a": "x", "a": "y", "b": "x", "c": "z"})"), kContainers, error)});
    EXPECT_EQ(Kind::kDuplicate, error.kind);
    EXPECT_EQ(nullptr, Json{read(as_large(R"({"a": 4, "a": 5, "b": 4, "c": 6})"), kContainers, error)});
    EXPECT_EQ(Kind::kDuplicate, error.kind);
}

// No byte behind the text is looked at, as the sanitizers see: each lies in a block of its own size.
TEST(Reader, AnyPartOfATextIsRefusedOrRead) {
    const std::string whole = R"({"name": ["text \u00e9 \ud83d\ude00", true, false, null, -12.5e3, {"é": 1234567}]})";
    for (size_t from = 0; from <= whole.size(); ++from)
        for (size_t length = 0; length <= whole.size() - from; ++length) {
            const std::unique_ptr<char[]> part{new char[length]};
            whole.copy(part.get(), length, from);
            ReadError error;
            const Json tree{read({part.get(), length}, kContainers, error)};
            const Json theirs{json_loadb(part.get(), length, JSON_REJECT_DUPLICATES, nullptr)};
            ASSERT_EQ(theirs == nullptr, tree == nullptr) << whole.substr(from, length);
        }
}

}  // namespace kcnvrt::text
