// Requests that make no sense, and what results hand out.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>

#include "ask.h"

namespace {

void expect_refused(const k_text_request_t* request, const char* why) {
    const Result result(k_text_run(request));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_USAGE) << why;
    EXPECT_EQ(output_of(result), "(none)");
    ASSERT_EQ(k_text_problem_count(result.get()), 1u) << why;
    EXPECT_EQ(problem_of(result).which, K_TEXT_IN_REQUEST);
    EXPECT_EQ(problem_of(result).severity, K_TEXT_ERROR);
    EXPECT_STREQ(problem_of(result).function, "usage");
    EXPECT_STREQ(problem_of(result).message, why);
}

TEST(TextRequest, NeedsItsParts) {
    expect_refused(nullptr, "there is no request");
    k_text_request_t request = request_for(K_TEXT_TO_NEW, "{}");
    request.text = nullptr;
    expect_refused(&request, "the request has no text");
    request = request_for(K_TEXT_SECTION_TO_NEW, "{}");
    expect_refused(&request, "the operation needs the name of a section");
    request = request_for(K_TEXT_DIFF, "{}");
    expect_refused(&request, "the operation needs a second text");
    request.other_length = 1;
    expect_refused(&request, "there is a length and no second text");
}

TEST(TextRequest, TakesNothingThatItWouldNotUse) {
    k_text_request_t request = request_for(K_TEXT_TO_OLD, "{}", "{}");
    expect_refused(&request, "the operation takes no second text");
    request = request_for(K_TEXT_TO_OLD, "{}");
    request.section = "vlan";
    expect_refused(&request, "the operation takes no name of a section");
    request = request_for(K_TEXT_TO_OLD, "{}");
    request.pointer = "";
    expect_refused(&request, "the operation takes no pointer");
    request = request_for(K_TEXT_TO_NEW, "{}");
    request.flags = K_TEXT_MERGE_PATCH;
    expect_refused(&request, "the operation does not take these flags");
    request = request_for(K_TEXT_APPLY, "{}", "{}");
    request.flags = 1u << 31;
    expect_refused(&request, "the operation does not take these flags");
}

TEST(TextRequest, BelongsToAKnownOperation) {
    for (const uint32_t operation : {0u, 99u, 4294967295u}) {
        const k_text_request_t request = request_for(operation, "{}");
        expect_refused(&request, "this version does not know the operation");
    }
}

TEST(TextRequest, IsIndentedWithinBounds) {
    k_text_request_t request = request_for(K_TEXT_APPLY, "{}", "{}");
    for (const int indent : {-2, 32}) {
        request.indent = indent;
        expect_refused(&request, "the indent is neither -1 nor from 0 to 31");
    }
    request.indent = K_TEXT_DEEPEST_INDENT;
    EXPECT_EQ(k_text_status(ask(request).get()), K_TEXT_CONVERTED);
}

// Callers are compiled against older and newer headers than the library.
TEST(TextRequest, SaysHowManyMembersItHas) {
    struct {
        k_text_request_t request;
        uint64_t later;
    } larger = {request_for(K_TEXT_APPLY, "1", "{}"), 0};
    larger.request.size = sizeof larger;
    EXPECT_EQ(k_text_status(ask(larger.request).get()), K_TEXT_CONVERTED);
    larger.later = 1;
    expect_refused(&larger.request, "the request has members that this version does not know");
    larger.request.size = offsetof(k_text_request_t, other_length);
    expect_refused(&larger.request, "the size of the request is too small");
}

TEST(TextResult, WritesOnlyTheMembersOfAProblemThatTheCallerHas) {
    const Result result = ask(request_for(K_TEXT_TO_NEW, "["));
    struct {
        k_text_problem_t problem;
        uint64_t later;
    } larger = {{}, 7};
    larger.problem.size = sizeof larger;
    EXPECT_EQ(k_text_problem(result.get(), 0, &larger.problem), 0);
    EXPECT_EQ(larger.problem.size, sizeof larger);
    EXPECT_STREQ(larger.problem.function, "parse");
    EXPECT_EQ(larger.later, 7u);
    larger.problem.size = offsetof(k_text_problem_t, message);
    larger.problem.function = "before";
    EXPECT_EQ(k_text_problem(result.get(), 0, &larger.problem), -1);
    EXPECT_STREQ(larger.problem.function, "before");
    EXPECT_EQ(k_text_problem(result.get(), 1, &larger.problem), -1);
    EXPECT_EQ(k_text_problem(result.get(), 0, nullptr), -1);
}

// Where there was not even memory for a result.
TEST(TextResult, MayBeNull) {
    size_t length = 7;
    EXPECT_EQ(k_text_status(nullptr), K_TEXT_OUT_OF_MEMORY);
    EXPECT_EQ(k_text_output(nullptr, &length), nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(k_text_problem_count(nullptr), 0u);
    k_text_free(nullptr);
}

TEST(TextLibrary, ListsTheSections) {
    size_t count = 0;
    for (const uint32_t list : {K_TEXT_OLD_SECTIONS, K_TEXT_NEW_SECTIONS})
        for (size_t i = 0; const char* name = k_text_section(list, i); ++i, ++count) {
            k_text_request_t request =
                request_for(list == K_TEXT_OLD_SECTIONS ? K_TEXT_SECTION_TO_OLD : K_TEXT_SECTION_TO_NEW, "{}");
            request.section = name;
            const Result result = ask(request);
            EXPECT_EQ(std::string(problem_of(result).message).find("not found"), std::string::npos) << name;
        }
    EXPECT_GT(count, 60u);
    EXPECT_EQ(k_text_section(2, 0), nullptr);
}

TEST(TextLibrary, FindsValues) {
    const std::string_view text = R"( {"a/b": [1, {"ключ": "x]"}], "a": tru)";
    const auto found = [text](const char* pointer) {
        size_t offset = 7, length = 7;
        const int answer = k_text_find(text.data(), text.size(), pointer, &offset, &length);
        EXPECT_EQ(answer, length != 0 ? 1 : 0) << pointer;
        EXPECT_TRUE(length != 0 || offset == 0) << pointer;
        return text.substr(offset, length);
    };
    EXPECT_EQ(found("/a~1b"), "[1, {\"ключ\": \"x]\"}]");
    EXPECT_EQ(found("/a~1b/0"), "1");
    EXPECT_EQ(found("/a~1b/1/ключ"), "\"x]\"");
    EXPECT_EQ(found("/a"), "tru");
    EXPECT_EQ(found(""), text.substr(1));
    for (const char* const pointer : {"/b", "/a~1b/2", "/a/b", "a", "/a~1b/1/ключ/0"})
        EXPECT_EQ(found(pointer), "") << pointer;
}

TEST(TextLibrary, NamesItsVersion) {
    int major = 0, minor = 0, patch = 0;
    char rest = 0;
    EXPECT_EQ(std::sscanf(k_text_version(), "%d.%d.%d%c", &major, &minor, &patch, &rest), 3);
}

}  // namespace
