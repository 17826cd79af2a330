// A section asked of a whole configuration: where it is taken from, and what is said about it then.
#include <gtest/gtest.h>
#include <jansson.h>

#include <cstring>
#include <set>
#include <vector>

#include "ask.h"
#include "values.h"

namespace {

k_text_request_t request_for_section(uint32_t operation, const char* name, std::string_view text) {
    k_text_request_t request = request_for(operation, text);
    request.section = name;
    return request;
}

// Whether a value, or one inside it, has all that the section has.
bool contains(const json_t* value, const json_t* section) {
    if (json_equal(value, section)) return true;
    bool has_all = json_is_object(value) && json_is_object(section);
    const char* name;
    json_t* member;
    if (has_all)
        json_object_foreach(const_cast<json_t*>(section), name, member) has_all =
            has_all && json_equal(json_object_get(value, name), member);
    if (has_all) return true;
    json_object_foreach(const_cast<json_t*>(value), name, member) if (contains(member, section)) return true;
    for (size_t i = 0; i < json_array_size(value); ++i)
        if (contains(json_array_get(value, i), section)) return true;
    return false;
}

bool is_empty(const json_t* section) {
    const Tree none = parsed(R"({"max_instance":0})");
    return json_object_size(section) + json_array_size(section) == 0 || json_equal(section, none.get());
}

struct Direction {
    uint32_t whole;
    uint32_t section;
    uint32_t names;
    const char* layout;
};

constexpr Direction kDirections[] = {
    {K_TEXT_TO_NEW, K_TEXT_SECTION_TO_NEW, K_TEXT_NEW_SECTIONS, "old"},
    {K_TEXT_TO_OLD, K_TEXT_SECTION_TO_OLD, K_TEXT_OLD_SECTIONS, "new"},
};

std::string example(const char* name, const Direction& direction) {
    return printed(::example((std::string(name) + "." + direction.layout + ".json").c_str()).get());
}

// Whatever finds the sections: what comes of each stands in the whole configuration as it is converted, and is what
// the section alone comes to, which nobody takes for a whole configuration.
TEST(Section, IsTakenOutOfAWholeConfiguration) {
    for (const Direction& direction : kDirections) {
        std::set<std::string> taken_out;
        for (const char* name : {"home-gateway", "dsl-gateway"}) {
            const std::string text = example(name, direction);
            const Tree source = parsed(text);
            const uint32_t flags = std::strcmp(name, "dsl-gateway") == 0 ? K_TEXT_DSL_VLAN : 0;
            const Tree converted = parsed(output_of(ask_with(flags, request_for(direction.whole, text))));
            for (size_t i = 0; const char* section = k_text_section(direction.names, i); ++i) {
                SCOPED_TRACE(std::string(name) + "." + direction.layout + ": " + section);
                const Result result = ask(request_for_section(direction.section, section, text));
                if (k_text_status(result.get()) == K_TEXT_REJECTED) {
                    EXPECT_STREQ(problem_of(result).function, "layout");
                    continue;
                }
                EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED);
                if (std::strcmp(section, "DSL_Vlan") == 0) continue;
                ASSERT_EQ(k_text_problem_count(result.get()), 1u);
                EXPECT_EQ(problem_of(result).severity, K_TEXT_NOTE);
                EXPECT_STREQ(problem_of(result).function, "layout");
                const std::string alone = printed(value_at(source.get(), problem_of(result).pointer));
                EXPECT_EQ(text.substr(problem_of(result).offset, problem_of(result).length), alone);

                const Result of_alone = ask(request_for_section(direction.section, section, alone));
                EXPECT_EQ(k_text_problem_count(of_alone.get()), 0u);
                EXPECT_EQ(output_of(of_alone), output_of(result));
                // The VLANs of the other kind are not in it, and DSL VLANs are written into the interfaces.
                const std::set<std::string> of_vlans =
                    flags != 0 ? std::set<std::string>{"vlan", "ifaces"} : std::set<std::string>{"dsl_vlan"};
                const Tree made = parsed(output_of(result));
                if (of_vlans.count(section) != 0 || is_empty(made.get())) continue;
                EXPECT_TRUE(contains(converted.get(), made.get())) << output_of(result);
                taken_out.insert(section);
            }
        }
        EXPECT_GT(taken_out.size(), 40u) << direction.layout;
    }
}

constexpr std::string_view kOld = R"({"wifi": {}, "wan_pvid": {"wan1": 10}, "lang": "en"})";

TEST(Section, OfAWholeConfigurationIsNoted) {
    const Result result = ask(request_for_section(K_TEXT_SECTION_TO_NEW, "wan_pvid", kOld));
    EXPECT_EQ(output_of(result), R"({"1":{"name":"wan1","pvid":10},"max_instance":1})");
    EXPECT_EQ(k_text_direction(result.get()), K_TEXT_TO_NEW);
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    EXPECT_STREQ(problem_of(result).pointer, "/wan_pvid");
    EXPECT_EQ(problem_of(result).column, 26u);
    EXPECT_NE(std::string(problem_of(result).message).find("--as-is"), std::string::npos);
    const Result as_is = ask_with(K_TEXT_AS_IS, request_for_section(K_TEXT_SECTION_TO_NEW, "wan_pvid", kOld));
    EXPECT_NE(output_of(as_is).find("lang"), std::string::npos);
    EXPECT_EQ(k_text_problem_count(as_is.get()), 0u);
}

TEST(Section, IsTheTextWhereThatIsNoWholeConfiguration) {
    for (const std::string_view text : {R"({"wifi": {}, "wan_pvid": 1})", R"({"wifi": {}, "Wifi": {}, "eth0": []})",
                                        R"({"Device": 1})", "[]", R"([{"wifi": {}, "vlan": {}}])"}) {
        const Result result = ask(request_for_section(K_TEXT_SECTION_TO_NEW, "wan_pvid", text));
        EXPECT_EQ(k_text_problem_count(result.get()), 0u) << text;
        EXPECT_EQ(output_of(result),
                  output_of(ask_with(K_TEXT_AS_IS, request_for_section(K_TEXT_SECTION_TO_NEW, "wan_pvid", text))));
    }
    for (const std::string_view text : {R"({"roaming": {}, "Links": []})", R"({"passwd": [], "users": {}})"}) {
        const Result result = ask(request_for_section(K_TEXT_SECTION_TO_NEW, "rip", text));
        EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED) << text;
        EXPECT_STREQ(problem_of(result).message, "the configuration has no /rip");
    }
}

// One layout has two names for what the other has one for.
TEST(Section, IsTakenFromWhereTheWholeConversionTakesIt) {
    constexpr std::string_view kBoth = R"({"passwd": [{"name": "a"}], "users": {}, "qos": {"links": {}}, "vlan": {}})";
    EXPECT_STREQ(problem_of(ask(request_for_section(K_TEXT_SECTION_TO_NEW, "Users", kBoth))).pointer, "/passwd");
    constexpr std::string_view kSecond = R"({"users": {}, "queuemanagement": {}})";
    EXPECT_STREQ(problem_of(ask(request_for_section(K_TEXT_SECTION_TO_NEW, "Users", kSecond))).pointer, "/users");
    EXPECT_STREQ(problem_of(ask(request_for_section(K_TEXT_SECTION_TO_NEW, "QoS", kSecond))).pointer,
                 "/queuemanagement");
    EXPECT_STREQ(problem_of(ask(request_for_section(K_TEXT_SECTION_TO_NEW, "QoS", kBoth))).pointer, "/qos");
}

TEST(Section, MadeOfTheWholeConfigurationTakesItAsItIs) {
    const Result result =
        ask(request_for_section(K_TEXT_SECTION_TO_NEW, "DSL_Vlan", example("dsl-gateway", kDirections[0])));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(k_text_problem_count(result.get()), 0u);
    EXPECT_NE(output_of(result).find("vlans"), std::string::npos);
}

TEST(Section, OfAnUnknownNameIsTheLibrarysToRefuse) {
    const Result result = ask(request_for_section(K_TEXT_SECTION_TO_NEW, "nosuch", kOld));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_STREQ(problem_of(result).message, "Section \"nosuch\" in new config not found");
}

TEST(Section, IsRefusedWhereTheConfigurationOrTheBaseIsOfAnotherLayout) {
    constexpr std::string_view kNew = R"({"Device": {"WiFi": {}}})";
    const k_text_request_t to_new = request_for_section(K_TEXT_SECTION_TO_NEW, "WiFi", kNew);
    EXPECT_EQ(k_text_status(ask(to_new).get()), K_TEXT_WRONG_LAYOUT);
    EXPECT_NE(std::string(problem_of(ask(to_new)).message).find("--to-old"), std::string::npos);
    const k_text_request_t to_old = request_for_section(K_TEXT_SECTION_TO_OLD, "wifi", kOld);
    EXPECT_EQ(k_text_status(ask(to_old).get()), K_TEXT_WRONG_LAYOUT);
    EXPECT_NE(std::string(problem_of(ask(to_old)).message).find("--to-new"), std::string::npos);
    k_text_request_t against_whole = request_for(K_TEXT_SECTION_TO_NEW, "{}", kNew);
    against_whole.section = "WiFi";
    EXPECT_EQ(k_text_status(ask(against_whole).get()), K_TEXT_WRONG_LAYOUT);
    EXPECT_EQ(problem_of(ask(against_whole)).which, K_TEXT_IN_OTHER);
    for (const uint32_t flag : {K_TEXT_AS_IS, K_TEXT_FORCE})
        for (const k_text_request_t& request : {to_new, to_old, against_whole})
            EXPECT_EQ(k_text_status(ask_with(flag, request).get()), K_TEXT_CONVERTED);
}

TEST(Section, IsRefusedWhereTheConfigurationDoesNotHaveIt) {
    const Result result =
        ask_with(K_TEXT_PARTIAL, request_for_section(K_TEXT_SECTION_TO_OLD, "ipsec", R"({"Device": {}})"));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_EQ(output_of(result), "(none)");
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    EXPECT_STREQ(problem_of(result).message, "the configuration has no /Device/Services/vpn/ipsec");
    EXPECT_STREQ(problem_of(result).pointer, "");
    EXPECT_EQ(problem_of(result).line, 1u);
}

// Messages, and what is left out, are where the caller finds them in what he gave.
TEST(Section, HasItsProblemsWhereTheTextHasThem) {
    constexpr std::string_view kText =
        "{\"vlan\": {},\n \"wifi\": {\"mbssid\": [\n  {\"SSID\": \"x\", \"AuthMode\": 1}]}}";
    const Result result = ask_with(K_TEXT_PARTIAL, request_for_section(K_TEXT_SECTION_TO_NEW, "WiFi", kText));
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_NE(output_of(result).find(R"("Ssid":"x")"), std::string::npos);
    ASSERT_EQ(k_text_problem_count(result.get()), 3u);
    EXPECT_STREQ(problem_of(result, 0).pointer, "/wifi");
    for (const size_t i : {size_t{1}, size_t{2}}) {
        const k_text_problem_t problem = problem_of(result, i);
        EXPECT_STREQ(problem.pointer, "/wifi/mbssid/0/AuthMode");
        EXPECT_EQ(problem.line, 3u);
        EXPECT_EQ(problem.column, 29u);
        EXPECT_EQ(problem.length, 1u);
    }
    EXPECT_EQ(problem_of(result, 1).severity, K_TEXT_ERROR);
    EXPECT_STREQ(problem_of(result, 2).function, "partial");
    k_text_excerpt_t excerpt = {};
    excerpt.size = sizeof excerpt;
    ASSERT_EQ(k_text_excerpt(result.get(), 1, kText.data(), kText.size(), 80, &excerpt), 0);
    EXPECT_STREQ(excerpt.line, R"({"SSID": "x", "AuthMode": 1}]}})");
    EXPECT_EQ(excerpt.mark, 26u);
}

}  // namespace
