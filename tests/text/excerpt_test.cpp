// The line of a text that a person is shown beside a problem: shortened, on one line, and without secrets.
#include <gtest/gtest.h>

#include "ask.h"

namespace {

using namespace std::string_view_literals;

struct Excerpt {
    int status;
    std::string line;
    std::string marked;  // what the mark covers
    size_t mark;
};

// Of problem 0 of a request; the text is the second one where there is one.
Excerpt excerpt_of(const k_text_request_t& request, size_t width) {
    const Result result = ask(request);
    const bool is_other = problem_of(result).which == K_TEXT_IN_OTHER;
    k_text_excerpt_t excerpt = {};
    excerpt.size = sizeof excerpt;
    const int status = k_text_excerpt(result.get(), 0, is_other ? request.other : request.text,
                                      is_other ? request.other_length : request.text_length, width, &excerpt);
    if (status != 0) return {status, "", "", 0};
    const std::string line = excerpt.line;
    return {status, line, line.substr(excerpt.mark, excerpt.mark_length), excerpt.mark};
}

// Operation `number` of a difference fails at the place where it stands.
Excerpt excerpt_of_difference(std::string_view difference, size_t width, uint32_t flags = 0) {
    k_text_request_t request = request_for(K_TEXT_APPLY, "{}", difference);
    request.flags = flags;
    return excerpt_of(request, width);
}

Excerpt excerpt_of_broken(std::string_view text, size_t width = 80, uint32_t flags = 0) {
    k_text_request_t request = request_for(K_TEXT_TO_NEW, text);
    request.flags = flags;
    return excerpt_of(request, width);
}

TEST(Excerpt, IsTheLineWithoutWhatItIsIndentedBy) {
    const Excerpt excerpt = excerpt_of_broken("{\n \t \"a\": [1 2],\r\n\"b\": 3}");
    EXPECT_EQ(excerpt.line, "\"a\": [1 2],");
    EXPECT_EQ(excerpt.marked, "2");
    EXPECT_EQ(excerpt.mark, 8u);
}

TEST(Excerpt, MarksOnlyTheBracketOfAnObject) {
    const Excerpt excerpt = excerpt_of_difference(R"([{"op": "test"}])", 80);
    EXPECT_EQ(excerpt.line, R"([{"op": "test"}])");
    EXPECT_EQ(excerpt.mark, 1u);
    EXPECT_EQ(excerpt.marked, "{");
}

TEST(Excerpt, MarksTheEndOfTheLineWhereTheRestIsMissing) {
    const Excerpt excerpt = excerpt_of_broken("{\"a\":");
    EXPECT_EQ(excerpt.line, "{\"a\":");
    EXPECT_EQ(excerpt.mark, 5u);
    EXPECT_EQ(excerpt.marked, "");
    EXPECT_EQ(excerpt_of_broken("").line, "");
    EXPECT_EQ(excerpt_of_broken("{\"a\": \"x\ny\"}").line, "{\"a\": \"x");
}

// Of a text without line breaks, too, however long it is.
TEST(Excerpt, IsShortenedAroundTheValue) {
    std::string many;
    for (int i = 0; i < 40000; ++i) many += "{\"op\": \"add\", \"path\": \"/x\", \"value\": 1}, ";
    const Excerpt behind = excerpt_of_difference("[" + many + R"({"op": "?", "path": "/y"}])", 50);
    EXPECT_EQ(behind.line, R"(..."/x", "value": ***}, {"op": "?", "path": "/y"}])");
}

TEST(Excerpt, FitsIntoTheWidth) {
    const std::string text =
        R"({"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa": tru, "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb": 1})";
    for (const size_t width : {0u, 24u, 25u, 40u, 60u, 90u, 91u, 200u}) {
        const Excerpt excerpt = excerpt_of_broken(text, width);
        EXPECT_LE(excerpt.line.size(), std::max<size_t>(width, 24)) << width;
        EXPECT_EQ(excerpt.marked, "tru") << excerpt.line;
        EXPECT_EQ(excerpt.line.substr(excerpt.mark, 3), "tru") << excerpt.line;
    }
    EXPECT_EQ(excerpt_of_broken(text, text.size()).line, text);
    EXPECT_EQ(excerpt_of_broken(text, 24).line, "...aa\": tru, \"bbbbbbb...");
}

TEST(Excerpt, CountsCharactersAndCutsNone) {
    const std::string name = "日本語日本語日本語日本語日本語日本語日本語";
    const std::string text = "{\"" + name + "\": tru, \"" + name + "\": 1}";
    const Excerpt excerpt = excerpt_of_broken(text, 30);
    EXPECT_EQ(excerpt.line, "...語日本語\": tru, \"日本語日本語日本語日本...");
    EXPECT_EQ(excerpt.marked, "tru");
}

TEST(Excerpt, ReplacesWhatWouldMoveACursor) {
    EXPECT_EQ(excerpt_of_broken("{\"a\t\x1b[31m\": 1}").line, "{\"a \xEF\xBF\xBD[31m\": 1}");
    EXPECT_EQ(excerpt_of_broken("{\"\xC2\x85\xE2\x80\xAE\xE2\x80\xA8\x7F\": tru}").line,
              "{\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\": tru}");
    EXPECT_EQ(excerpt_of_broken("{\"a\": \"\xE9\xE9\"}").line, "{\"a\": \"\xEF\xBF\xBD\xEF\xBF\xBD\"}");
    EXPECT_EQ(excerpt_of_broken("{\"a\": \0}"sv).line, "{\"a\": \xEF\xBF\xBD}");
}

struct Masked {
    std::string_view text;
    std::string_view line;
};

// clang-format off
constexpr Masked kMasked[] = {
    {R"({"password": "hunter2", "b": tru})",             R"({"password": ***, "b": tru})"},
    {R"({"WPAPSK" : 12345678 , "DevPin":1, "b": tru})",  R"({"WPAPSK" : *** , "DevPin":***, "b": tru})"},
    {R"({"mySecret": null, "LOID": "", "b": tru})",      R"({"mySecret": ***, "LOID": ***, "b": tru})"},
    {R"({"keys": ["a", {"b": [1]}, "c"], "d": 1, x})",   R"({"keys": [***, {"b": [***]}, ***], "d": 1, x})"},
    {R"({"key": {"a": {}}, "b": [{"c": 2}], x})",        R"({"key": {"a": {}}, "b": [{"c": 2}], x})"},
    {R"({"p\u0061ssword": "hunter2", x})",               R"({"p\u0061ssword": ***, x})"},
    {R"({"password": "a\"b, c", "b": tru})",             R"({"password": ***, "b": tru})"},
    // nearly JSON
    {R"({"password": hunter2})",                         R"({"password": ***})"},
    {R"({"password": 'hunter, 2', "b": 1})",             R"({"password": ***, "b": 1})"},
    {R"({password: "hunter2"})",                         R"({password: ***})"},
    {R"({"password": "hunter2)",                         R"({"password": ***)"},
    {R"({"password": hunter 2})",                        R"({"password": *** ***})"},
};
// clang-format on

TEST(Excerpt, MasksSecrets) {
    for (const Masked& row : kMasked) {
        EXPECT_EQ(excerpt_of_broken(row.text).line, row.line);
        EXPECT_EQ(excerpt_of_broken(row.text, 80, K_TEXT_SHOW_SECRETS).line, row.text);
    }
}

// The quote that is missing must not turn the names behind it into values.
TEST(Excerpt, MasksSecretsBehindAQuoteThatIsMissing) {
    EXPECT_EQ(excerpt_of_broken("{\"a\": \"x,\n\"password\": \"hunter2\"}").line, "{\"a\": \"x,");
    EXPECT_EQ(excerpt_of_broken("{\"a\": 'x,\n\"password\": \"hunter2\"}").line, "{\"a\": 'x,");
    EXPECT_EQ(excerpt_of_broken("{\"a\": 'x', \"b\":\n\"y\", \"password\": \"hunter2\" 5}").line,
              "{\"a\": 'x', \"b\":");
}

TEST(Excerpt, MarksTheMaskOfASecret) {
    const Excerpt excerpt = excerpt_of_broken(R"({"password": "hun\ter2\x", "b": 1})");
    EXPECT_EQ(excerpt.line, R"({"password": ***, "b": 1})");
    EXPECT_EQ(excerpt.mark, 13u);
    EXPECT_EQ(excerpt.marked, "***");
}

// A secret that starts on a line of its own, inside what is one.
TEST(Excerpt, MasksWhatALineBeforeItMakesASecret) {
    EXPECT_EQ(excerpt_of_broken("{\"password\":\n  [\n\"hunter2\", tru]}").line, "***, ***]}");
}

// The name of what a difference changes stands in a path.
TEST(Excerpt, MasksTheValuesOfADifference) {
    constexpr std::string_view kDifference = R"([{"op": "?", "path": "/password", "value": "hunter2"}])";
    EXPECT_EQ(excerpt_of_difference(kDifference, 80).line, R"([{"op": "?", "path": "/password", "value": ***}])");
    EXPECT_EQ(excerpt_of_difference(kDifference, 80, K_TEXT_SHOW_SECRETS).line, kDifference);
}

TEST(Excerpt, NeedsAProblemWithAPlace) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_NEW, "{}");
    request.section = "nosuch";
    EXPECT_EQ(excerpt_of(request, 80).status, -1);
    const Result result = ask(request_for(K_TEXT_TO_NEW, "{"));
    k_text_excerpt_t excerpt = {};
    EXPECT_EQ(k_text_excerpt(result.get(), 0, "{", 1, 80, &excerpt), -1);
    excerpt.size = sizeof excerpt;
    EXPECT_EQ(k_text_excerpt(result.get(), 1, "{", 1, 80, &excerpt), -1);
    EXPECT_EQ(k_text_excerpt(result.get(), 0, nullptr, 1, 80, &excerpt), -1);
    EXPECT_EQ(k_text_excerpt(nullptr, 0, "{", 1, 80, &excerpt), -1);
    EXPECT_EQ(k_text_excerpt(result.get(), 0, "{", 1, 80, &excerpt), 0);
    EXPECT_STREQ(excerpt.line, "{");
}

}  // namespace
