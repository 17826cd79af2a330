// Texts of another layout than an operation reads: what is refused, and what finds the way by itself.
#include <gtest/gtest.h>

#include "ask.h"

namespace {

constexpr uint32_t kForced = K_TEXT_FORCE;

struct Refused {
    uint32_t operation;
    uint32_t flags;
    std::string_view text;
    const char* pointer;
    size_t column;
    const char* hint;  // what to call instead
};

// clang-format off
constexpr Refused kRefused[] = {
    {K_TEXT_TO_NEW, 0,               R"({"lang": 1, "Device": {}})",    "/Device", 23, "to-old"},
    {K_TEXT_TO_NEW, K_TEXT_DSL_VLAN, R"({"Device": {}, "groups": 1})",  "/Device", 12, "to-old"},
    {K_TEXT_TO_OLD, 0,               R"({"lang": "en"})",               "",        1,  "to-new"},
    {K_TEXT_TO_OLD, 0,               R"({"Device": []})",               "",        1,  "to-new"},
    {K_TEXT_TO_OLD, 0,               R"({"Links": {}})",                "",        1,  "to-new"},
    {K_TEXT_TO_NEW, 0,               R"({"groups": null})",             "/groups", 12, "--dsl-vlan"},
    {K_TEXT_TO_NEW, K_TEXT_DSL_VLAN, R"({"vlan": null})",               "/vlan",   10, "without --dsl-vlan"},
    {K_TEXT_CONVERT, K_TEXT_TOWARDS_NEW, R"({"Device": {}})",           "/Device", 12, "to-old"},
    {K_TEXT_CONVERT, K_TEXT_TOWARDS_OLD, R"({"lang": "en"})",           "",        1,  "to-new"},
    {K_TEXT_CONVERT, K_TEXT_DSL_VLAN,    R"({"vlan": {}})",             "/vlan",   10, "without --dsl-vlan"},
};
// clang-format on

TEST(Layout, IsRefusedWhereItIsNotTheOneThatIsRead) {
    for (const Refused& refused : kRefused) {
        SCOPED_TRACE(std::string(refused.text) + " for operation " + std::to_string(refused.operation));
        const Result result = ask_with(refused.flags | K_TEXT_PARTIAL, request_for(refused.operation, refused.text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_LAYOUT);
        EXPECT_EQ(output_of(result), "(none)");
        ASSERT_EQ(k_text_problem_count(result.get()), 1u);
        const k_text_problem_t problem = problem_of(result);
        EXPECT_EQ(problem.which, K_TEXT_IN_TEXT);
        EXPECT_EQ(problem.severity, K_TEXT_ERROR);
        EXPECT_STREQ(problem.function, "layout");
        EXPECT_STREQ(problem.pointer, refused.pointer);
        EXPECT_EQ(problem.line, 1u);
        EXPECT_EQ(problem.column, refused.column);
        EXPECT_NE(std::string(problem.message).find(refused.hint), std::string::npos) << problem.message;
    }
}

TEST(Layout, IsNotAskedForByForce) {
    for (const Refused& refused : kRefused) {
        const Result result = ask_with(refused.flags | kForced, request_for(refused.operation, refused.text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED) << refused.text;
    }
}

struct Passing {
    uint32_t operation;
    uint32_t flags;
    std::string_view text;
};

constexpr Passing kPassing[] = {
    {K_TEXT_TO_NEW, 0, "{}"},
    {K_TEXT_TO_NEW, K_TEXT_DSL_VLAN, "{}"},
    {K_TEXT_TO_OLD, 0, "{}"},
    {K_TEXT_TO_NEW, 0, R"({"Device": 1, "lang": "en"})"},
    {K_TEXT_TO_NEW, 0, R"({"groups": {}, "vlan": {}})"},
    {K_TEXT_TO_NEW, K_TEXT_DSL_VLAN, R"({"groups": {}, "vlan": {}})"},
    {K_TEXT_TO_NEW, K_TEXT_DSL_VLAN, R"({"lang": "en"})"},
    {K_TEXT_TO_NEW, 0, R"({"vlan": {}})"},
    {K_TEXT_TO_OLD, 0, R"({"Device": {"Vlan": {}}})"},
    {K_TEXT_TO_OLD, K_TEXT_DSL_VLAN, R"({"Device": {"Vlan": {}}})"},
    {K_TEXT_TO_OLD, 0, R"({"Device": {}, "groups": {}})"},
};

TEST(Layout, PassesWhereNothingSpeaksAgainstIt) {
    for (const Passing& passing : kPassing) {
        const Result result = ask_with(passing.flags, request_for(passing.operation, passing.text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED) << passing.text;
        EXPECT_EQ(k_text_direction(result.get()), passing.operation) << passing.text;
        EXPECT_EQ(k_text_problem_count(result.get()), 0u) << passing.text;
    }
}

TEST(Layout, OfABaseIsTheNewOne) {
    const k_text_request_t request = request_for(K_TEXT_TO_NEW, R"({"lang": "en"})", "{\n\"lang\": \"en\"}");
    const Result result = ask(request);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_LAYOUT);
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    EXPECT_EQ(problem_of(result).which, K_TEXT_IN_OTHER);
    EXPECT_STREQ(problem_of(result).pointer, "");
    EXPECT_EQ(problem_of(result).line, 1u);
    EXPECT_NE(std::string(problem_of(result).message).find("to-new"), std::string::npos);
    EXPECT_EQ(k_text_status(ask_with(kForced, request).get()), K_TEXT_CONVERTED);
    EXPECT_EQ(k_text_status(ask(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})", "{}")).get()), K_TEXT_CONVERTED);
    EXPECT_EQ(k_text_status(ask(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})", R"({"Device": {}})")).get()),
              K_TEXT_CONVERTED);
}

TEST(Layout, OfBothTextsIsToldAtOnce) {
    const Result result = ask(request_for(K_TEXT_TO_NEW, R"({"Device": {}})", R"({"lang": "en"})"));
    ASSERT_EQ(k_text_problem_count(result.get()), 2u);
    EXPECT_EQ(problem_of(result, 0).which, K_TEXT_IN_TEXT);
    EXPECT_EQ(problem_of(result, 1).which, K_TEXT_IN_OTHER);
}

struct Found {
    std::string_view text;
    uint32_t flags;
    uint32_t operation;  // that converts it the same way
    uint32_t flags_of_operation;
};

constexpr std::string_view kOldOfServices =
    R"({"groups": {"a": {"lans": ["eth0"], "wans": ["p"], "name": "a"}}, "ifaces": {}})";
constexpr std::string_view kNewWithVlan = R"({"Device": {"Vlan": {"vlans": {"1": {"ifname": "br0", "vid": 7, )"
                                          R"("ports": {"1": {"name": "eth0", "tag": true}}}}}}})";

constexpr Found kFound[] = {
    {"{}", 0, K_TEXT_TO_NEW, 0},
    {R"({"lang": "en"})", 0, K_TEXT_TO_NEW, 0},
    {R"({"Device": "no object", "lang": "en"})", 0, K_TEXT_TO_NEW, 0},
    {R"({"Device": {"DeviceInfo": {"lang": "en"}}})", 0, K_TEXT_TO_OLD, 0},
    {"{}", K_TEXT_TOWARDS_OLD, K_TEXT_TO_OLD, 0},
    {kOldOfServices, 0, K_TEXT_TO_NEW, K_TEXT_DSL_VLAN},
    {R"({"groups": {}, "vlan": {"vlans": []}})", 0, K_TEXT_TO_NEW, 0},
    {R"({"groups": {}, "vlan": {"vlans": []}})", K_TEXT_DSL_VLAN, K_TEXT_TO_NEW, K_TEXT_DSL_VLAN},
    {kNewWithVlan, 0, K_TEXT_TO_OLD, 0},
    {kNewWithVlan, K_TEXT_DSL_VLAN, K_TEXT_TO_OLD, K_TEXT_DSL_VLAN},
};

TEST(Layout, SaysTheWayWhereNobodyElseDoes) {
    for (const Found& found : kFound) {
        const Result result = ask_with(found.flags, request_for(K_TEXT_CONVERT, found.text));
        const Result expected = ask_with(found.flags_of_operation, request_for(found.operation, found.text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED) << found.text;
        EXPECT_EQ(k_text_direction(result.get()), found.operation) << found.text;
        EXPECT_EQ(output_of(result), output_of(expected)) << found.text;
    }
    // The flag has a say.
    EXPECT_NE(output_of(ask(request_for(K_TEXT_CONVERT, kOldOfServices))),
              output_of(ask_with(kForced, request_for(K_TEXT_TO_NEW, kOldOfServices))));
    EXPECT_NE(output_of(ask(request_for(K_TEXT_TO_OLD, kNewWithVlan))),
              output_of(ask_with(K_TEXT_DSL_VLAN, request_for(K_TEXT_TO_OLD, kNewWithVlan))));
}

TEST(Layout, IsNoneWhereNothingIsConverted) {
    EXPECT_EQ(k_text_direction(nullptr), 0u);
    EXPECT_EQ(k_text_direction(ask(request_for(K_TEXT_CONVERT, "[")).get()), 0u);
    EXPECT_EQ(k_text_direction(ask(request_for(K_TEXT_DIFF, "1", "2")).get()), 0u);
    EXPECT_EQ(k_text_direction(ask(request_for(99, "{}")).get()), 0u);
}

TEST(Layout, OfAConversionGoesOneWayOnly) {
    const Result result =
        ask_with(K_TEXT_TOWARDS_NEW | K_TEXT_TOWARDS_OLD, request_for(K_TEXT_CONVERT, R"({"lang": "en"})"));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_USAGE);
    EXPECT_STREQ(problem_of(result).message, "the request has two directions");
}

}  // namespace
