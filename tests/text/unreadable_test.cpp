// Texts that cannot be read: what is said of them, and where.
#include <gtest/gtest.h>

#include "ask.h"

namespace {

using namespace std::string_view_literals;

struct Row {
    std::string_view text;
    size_t line;
    size_t column;
    const char* message;
};

// clang-format off
constexpr Row kRows[] = {
    // what the file really is, without a place where no line can be shown
    {"\xEF\xBB\xBF{}"sv,             1,  1, "the text begins with a byte-order mark: save it as UTF-8 without one"},
    {"\xFF\xFE{\0}\0"sv,             0,  0, "this is UTF-16: save it as UTF-8"},
    {"\xFE\xFF\0{\0}"sv,             0,  0, "this is UTF-16: save it as UTF-8"},
    {"{\0}\0"sv,                     0,  0, "this is UTF-16: save it as UTF-8"},
    {"\0{\0}"sv,                     0,  0, "this is UTF-16: save it as UTF-8"},
    {"\x1F\x8B\x08\0"sv,             0,  0, "this is compressed (gzip): unpack it first"},
    {"PK\x03\x04\x14"sv,             0,  0, "this is a ZIP archive: unpack it first"},
    {"\xFD" "7zXZ\0\0"sv,            0,  0, "this is compressed (xz): unpack it first"},
    {"7z\xBC\xAF\x27\x1C"sv,         0,  0, "this is a 7z archive: unpack it first"},
    {"BZh91AY"sv,                    0,  0, "this is compressed (bzip2): unpack it first"},
    {"\x28\xB5\x2F\xFD\x24"sv,       0,  0, "this is compressed (zstd): unpack it first"},
    {"\x04\x22\x4D\x18\x64"sv,       0,  0, "this is compressed (lz4): unpack it first"},
    {"%PDF-1.7"sv,                   0,  0, "this is a PDF document, not JSON"},
    {"\x7F" "ELF\x02"sv,             0,  0, "this is a program, not JSON"},
    {"\n <!DOCTYPE html>"sv,         1,  1, "this is an HTML page, not JSON: it may be the page on which one has to log in"},
    {"<HTML><head>"sv,               1,  1, "this is an HTML page, not JSON: it may be the page on which one has to log in"},
    {"<?xml version='1.0'?>"sv,      1,  1, "this is XML or HTML, not JSON"},
    // nothing, half of it, more than it
    {""sv,                           1,  1, "there is nothing: the text is empty"},
    {" \n"sv,                        2,  1, "there is nothing but white space"},
    {R"({"a": [1)"sv,                1,  9, "the text ends in the middle: the rest of it is missing"},
    {R"({"a": "x)"sv,                1,  9, "the text ends in the middle: the rest of it is missing"},
    {"{}\n{}"sv,                     2,  1, "the JSON text ends before this, and something follows"},
    {"\"x\""sv,                      1,  1, "a configuration is an object in { }, this is a single value"},
    {"1"sv,                          1,  1, "a configuration is an object in { }, this is a single value"},
    {" []"sv,                        1,  2, "a configuration is an object, this is an array"},
    {"# Title\n"sv,                  1,  1, "this is no JSON: an object in { } or an array in [ ] is expected"},
    {"hello"sv,                      1,  1, "this is no JSON: an object in { } or an array in [ ] is expected"},
    // what other languages have
    {"{\n'a': 1}"sv,                 2,  1, "a name stands in double quotes, not in single ones"},
    {"{\"a\": 'x'}"sv,               1,  7, "a text stands in double quotes, not in single ones"},
    {"{\"a\": True}"sv,              1,  7, "true, false and null are written in small letters"},
    {"{\"a\": NULL}"sv,              1,  7, "true, false and null are written in small letters"},
    {"{\"a\": truex}"sv,             1,  7, "a text stands in double quotes; only numbers, true, false and null go without"},
    {"{\"a\": NaN}"sv,               1,  7, "a text stands in double quotes; only numbers, true, false and null go without"},
    {"// x\n{}"sv,                   1,  1, "JSON has no comments"},
    {"{\"a\": 1 /* x */}"sv,         1,  9, "JSON has no comments"},
    {"{\"a\": 1, # x\n\"b\": 2}"sv,  1, 10, "JSON has no comments"},
    {"{\"a\": 1,}"sv,                1,  9, "the comma before this } is one too many"},
    {"{\"a\": [1,\n]}"sv,            2,  1, "the comma before this ] is one too many"},
    {"{\"a\": 01}"sv,                1,  7, "a number does not begin with 0"},
    {"{\"a\": -01}"sv,               1,  7, "a number does not begin with 0"},
    {"{\"a\": +1}"sv,                1,  7, "a number does not begin with +"},
    {"{\"a\": .5}"sv,                1,  7, "this is no number"},
    {"{\"a\": 1.}"sv,                1,  7, "this is no number"},
    // slips
    {"{a: 1}"sv,                     1,  2, "the name of a member, in double quotes, or } is expected here"},
    {"{\"a\" 1}"sv,                  1,  6, "a colon is expected here, between a member's name and its value"},
    {"{\"a\": 1 \"b\": 2}"sv,        1,  9, "a comma or } is expected here"},
    {"{\"a\": [1 2]}"sv,             1, 10, "a comma or ] is expected here"},
    {"{\"a\": }"sv,                  1,  7, "a value is expected here"},
    {"{\"a\": @}"sv,                 1,  7, "a value is expected here"},
    {"{\"a\": \"x\ny\"}"sv,          1,  9, "a line ends inside a text: its closing quote is missing"},
    {"{\"a\": \"x\ty\"}"sv,          1,  9, "a control character inside a text: it is written as \\u and four hexadecimal digits"},
    {"{\"a\": \"x\\y\"}"sv,          1,  9, "a backslash inside a text is followed by \" \\ / b f n r t or uXXXX"},
    {"{\"a\": \"\\ud800\"}"sv,       1,  7, "this \\u is half of a pair whose other half is missing"},
    // what JSON may have and a configuration may not, and damage
    {"{\"a\": 1,\n \"a\": 2}"sv,     2,  2, "\"a\" is given twice in the same object"},
    {"{\"a\": \"\\u0000\"}"sv,       1,  7, "a text with the character \\u0000 cannot be converted"},
    {"{\"a\": 1e999}"sv,             1,  7, "this number is too large"},
    {"{\"a\": 9223372036854775808}"sv, 1, 7, "this number is too large"},
    {"{\"a\":\0}"sv,                 1,  6, "a NUL byte: the file is damaged, or it is no text"},
    {"{\"\xC3\xA9\": \"\xE9\"}"sv,   1,  8, "this is no UTF-8: the text is damaged, or in another encoding"},
};
// clang-format on

TEST(UnreadableText, IsExplainedWhereItIsWrong) {
    for (const Row& row : kRows) {
        const Result result = ask(request_for(K_TEXT_TO_NEW, row.text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_UNREADABLE) << row.text;
        ASSERT_EQ(k_text_problem_count(result.get()), 1u) << row.text;
        const k_text_problem_t problem = problem_of(result);
        EXPECT_STREQ(problem.message, row.message) << row.text;
        EXPECT_EQ(problem.line, row.line) << row.text;
        EXPECT_EQ(problem.column, row.column) << row.text;
        EXPECT_STREQ(problem.function, "parse") << row.text;
    }
}

TEST(UnreadableText, MayBeOfASectionOrAnyValue) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_NEW, "1");
    request.section = "wan_pvid";
    EXPECT_STREQ(problem_of(ask(request)).message,
                 "a section is an object in { } or an array in [ ], this is a single value");
    EXPECT_EQ(k_text_status(ask(request_for(K_TEXT_DIFF, "1", "2")).get()), K_TEXT_CONVERTED);
}

TEST(UnreadableText, IsNestedTooDeep) {
    constexpr size_t kLevels = 2049;
    const Result result = ask(request_for(K_TEXT_DIFF, "1", std::string(kLevels, '[') + std::string(kLevels, ']')));
    EXPECT_STREQ(problem_of(result).message, "arrays and objects are nested more than 2048 levels deep");
    EXPECT_EQ(problem_of(result).column, kLevels);
}

// The name may be long, and a value must not be shown.
TEST(UnreadableText, ShowsANameOnlyWhenItIsShort) {
    const std::string name(65, 'a');
    const std::string text = "{\"" + name + "\": 1, \"" + name + "\": 2}";
    EXPECT_STREQ(problem_of(ask(request_for(K_TEXT_TO_NEW, text))).message,
                 "this member is given twice in the same object");
}

TEST(UnreadableText, DoesNotShowAValue) {
    for (const std::string_view text :
         {R"({"password": hunter2})", R"({"password": "hunter2)", R"({"password": "hunter2" 1})",
          R"({"password": "hunter2\x"})", R"({"password": "hunter2\u0000"})"}) {
        const Result result = ask(request_for(K_TEXT_TO_NEW, text));
        ASSERT_EQ(k_text_status(result.get()), K_TEXT_UNREADABLE);
        EXPECT_EQ(std::string(problem_of(result).message).find("hunter"), std::string::npos) << text;
    }
}

}  // namespace
