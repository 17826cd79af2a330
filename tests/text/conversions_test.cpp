// Each operation of the text layer: what it makes of texts, and what it says when it makes nothing.
#include <gtest/gtest.h>

#include <vector>

#include "ask.h"

namespace {

constexpr std::string_view kOldPvid = R"({"wan2": 20, "wan1": 10})";
constexpr std::string_view kNewPvid =
    R"({"1":{"name":"wan1","pvid":10},"2":{"name":"wan2","pvid":20},"max_instance":2})";

Result section(uint32_t operation, std::string_view text, const char* name) {
    k_text_request_t request = request_for(operation, text);
    request.section = name;
    return ask(request);
}

TEST(TextConversion, ConvertsConfigurationsBothWays) {
    const Result to_new = ask(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})"));
    EXPECT_EQ(k_text_status(to_new.get()), K_TEXT_CONVERTED);
    EXPECT_NE(output_of(to_new).find(R"("DeviceInfo":{"lang":"en"})"), std::string::npos);
    const Result to_old = ask(request_for(K_TEXT_TO_OLD, R"({"Device": {"DeviceInfo": {"lang": "en"}}})"));
    EXPECT_EQ(k_text_status(to_old.get()), K_TEXT_CONVERTED);
    EXPECT_NE(output_of(to_old).find(R"("lang":"en")"), std::string::npos);
    EXPECT_EQ(k_text_problem_count(to_old.get()), 0u);
}

TEST(TextConversion, ConvertsSectionsBothWays) {
    EXPECT_EQ(output_of(section(K_TEXT_SECTION_TO_NEW, kOldPvid, "wan_pvid")), kNewPvid);
    EXPECT_EQ(output_of(section(K_TEXT_SECTION_TO_OLD, kNewPvid, "wan_pvid")), R"({"wan1":10,"wan2":20})");
    EXPECT_EQ(output_of(section(K_TEXT_SECTION_TO_NEW, "[]", "wan_pvid")), R"({"max_instance":0})");
}

TEST(TextConversion, NamesWhatItDoesNotKnow) {
    const Result result = section(K_TEXT_SECTION_TO_OLD, "{}", "WAN_PVID");
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_EQ(output_of(result), "(none)");
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    const k_text_problem_t problem = problem_of(result);
    EXPECT_STREQ(problem.function, "k_cnvrt_get_section_to_old");
    EXPECT_STREQ(problem.message, "Section \"WAN_PVID\" in old config not found");
    EXPECT_EQ(problem.pointer, nullptr);
    EXPECT_EQ(problem.line, 0u);
}

TEST(TextConversion, AnswersWithTheDifferenceToABase) {
    const std::string base = output_of(ask(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})")));
    k_text_request_t request = request_for(K_TEXT_TO_NEW, R"({"lang": "fr"})", base);
    EXPECT_EQ(output_of(ask(request)), R"([{"op":"replace","path":"/Device/DeviceInfo/lang","value":"fr"}])");
    request.flags = K_TEXT_MERGE_PATCH;
    EXPECT_EQ(output_of(ask(request)), R"({"Device":{"DeviceInfo":{"lang":"fr"}}})");
    request = request_for(K_TEXT_SECTION_TO_NEW, R"({"wan1": 11})", kNewPvid);
    request.section = "wan_pvid";
    request.flags = K_TEXT_MERGE_PATCH;
    EXPECT_EQ(output_of(ask(request)), R"({"1":{"pvid":11},"2":null,"max_instance":1})");
}

TEST(TextConversion, ReadsADeviceThatTiesItsVlansToDslServices) {
    k_text_request_t request = request_for(K_TEXT_TO_NEW, R"({"groups": {}})");
    const std::string without = output_of(ask(request));
    request.flags = K_TEXT_DSL_VLAN;
    EXPECT_NE(output_of(ask(request)), without);
}

TEST(TextConversion, ComparesAndChangesAnyValues) {
    EXPECT_EQ(output_of(ask(request_for(K_TEXT_DIFF, "\"text\"", "null"))),
              R"([{"op":"replace","path":"","value":null}])");
    EXPECT_EQ(output_of(ask(request_for(K_TEXT_APPLY, R"({"a": "x\u0000y"})", R"({"b": 1})"))),
              R"({"a":"x\u0000y","b":1})");
    k_text_request_t request = request_for(K_TEXT_DIFF, R"({"a": 1})", R"({"a": 2})");
    request.flags = K_TEXT_MERGE_PATCH;
    EXPECT_EQ(output_of(ask(request)), R"({"a":2})");
}

TEST(TextConversion, SaysWhatDoesNotFitInADifference) {
    const Result result = ask(request_for(K_TEXT_APPLY, R"({"a": 1})", R"([{"op": "remove", "path": "/b"}])"));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    const k_text_problem_t problem = problem_of(result);
    EXPECT_EQ(problem.which, K_TEXT_IN_OTHER);
    EXPECT_EQ(problem.severity, K_TEXT_ERROR);
    EXPECT_STREQ(problem.function, "k_conf_apply");
    EXPECT_STREQ(problem.pointer, "/0");
    EXPECT_EQ(problem.offset, 1u);
    EXPECT_EQ(problem.length, 30u);
    EXPECT_EQ(problem.line, 1u);
    EXPECT_EQ(problem.column, 2u);
}

// Roaming prints a line towards the old layout, an empty one where it has nothing to say.
TEST(TextConversion, NotesWhatTheLibraryPrints) {
    const Result result = ask(request_for(K_TEXT_TO_OLD, "{\"Device\":\n {\"Roaming\": {}}}"));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED);
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    const k_text_problem_t problem = problem_of(result);
    EXPECT_EQ(problem.severity, K_TEXT_NOTE);
    EXPECT_STREQ(problem.function, "diagnostic");
    EXPECT_STREQ(problem.message, "Object item not found: Enable");
    EXPECT_STREQ(problem.pointer, "/Device/Roaming");
    EXPECT_EQ(problem.line, 2u);
    EXPECT_EQ(problem.column, 14u);
    EXPECT_EQ(problem.length, 2u);
    const Result silent = ask(request_for(K_TEXT_TO_OLD, R"({"Device": {"Roaming":
        {"Enable": true, "Port": 1, "MulticastEnable": true, "BandSettings": {},
         "MulticastSettings": {"TTL": 1, "GroupAddress": "239.0.0.1"}}}})"));
    EXPECT_EQ(k_text_status(silent.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(k_text_problem_count(silent.get()), 0u);
}

TEST(TextConversion, DropsTheLineBreakAtTheEndOfAMessage) {
    const Result routes = ask(request_for(K_TEXT_TO_NEW, R"({"route": [{"ip": 1}]})"));
    ASSERT_EQ(k_text_problem_count(routes.get()), 1u);
    EXPECT_STREQ(problem_of(routes).message, "Invalid field ip!");
}

TEST(TextConversion, SaysWhereATextCannotBeRead) {
    const Result result = ask(request_for(K_TEXT_DIFF, "{}", "{\n  \"\xC3\xA9\": tru\n}"));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_UNREADABLE);
    const k_text_problem_t problem = problem_of(result);
    EXPECT_EQ(problem.which, K_TEXT_IN_OTHER);
    EXPECT_EQ(problem.offset, 10u);
    EXPECT_EQ(problem.line, 2u);
    EXPECT_EQ(problem.column, 8u);
}

TEST(TextConversion, TellsOfBothTextsThatCannotBeRead) {
    const Result result = ask(request_for(K_TEXT_DIFF, "{", "["));
    ASSERT_EQ(k_text_problem_count(result.get()), 2u);
    EXPECT_EQ(problem_of(result, 0).which, K_TEXT_IN_TEXT);
    EXPECT_EQ(problem_of(result, 1).which, K_TEXT_IN_OTHER);
}

TEST(TextConversion, ShapesTheOutputAsAskedFor) {
    k_text_request_t request = request_for(K_TEXT_APPLY, R"({"a": [1]})", "[]");
    EXPECT_EQ(output_of(ask(request)), R"({"a":[1]})");
    request.indent = 0;
    EXPECT_EQ(output_of(ask(request)), R"({"a": [1]})");
    request.indent = 2;
    EXPECT_EQ(output_of(ask(request)), "{\n  \"a\": [\n    1\n  ]\n}");
    EXPECT_EQ(k_text_output(ask(request).get(), nullptr)[0], '{');
}

TEST(TextConversion, NeedsNoByteBehindATextAndEndsItsOutputByANul) {
    const std::vector<char> text = {'[', '1', ']'};
    const Result result = ask(request_for(K_TEXT_APPLY, {text.data(), text.size()}, "[]"));
    size_t length = 0;
    const char* const output = k_text_output(result.get(), &length);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(output[length], '\0');
}

}  // namespace
