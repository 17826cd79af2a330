// What becomes of a member, and what a place of the result is made of, as a request asks for it.
#include <gtest/gtest.h>

#include "ask.h"

namespace {

k_text_request_t request_for_member(std::string_view text, const char* pointer, uint32_t flags = 0) {
    k_text_request_t request = request_for(K_TEXT_EXPLAIN, text);
    request.pointer = pointer;
    request.flags = flags;
    return request;
}

std::string explained(std::string_view text, const char* pointer, uint32_t flags = 0) {
    return output_of(ask(request_for_member(text, pointer, flags)));
}

TEST(Explain, NamesThePlacesThatAMemberMakes) {
    EXPECT_EQ(explained(R"({"lang": "en"})", "/lang"),
              R"({"pointer":"/lang","answer":"used","effects":[)"
              R"({"pointer":"/Device/DeviceInfo","with":{"lang":"en"},"without":null}]})");
    EXPECT_EQ(explained(R"({"lang": "en", "add_sets": {"device_mode": "router"}})", "/lang"),
              R"({"pointer":"/lang","answer":"used","effects":[)"
              R"({"pointer":"/Device/DeviceInfo/lang","with":"en","without":null}]})");
    EXPECT_EQ(explained(R"({"Device": {"wan_pvid": {"1": {"name": "wan1", "pvid": 10}}}})", "/Device/wan_pvid/1/pvid"),
              R"({"pointer":"/Device/wan_pvid/1/pvid","answer":"used","effects":[)"
              R"({"pointer":"/wan_pvid/wan1","with":10,"without":null}]})");
}

TEST(Explain, KnowsWhatIsMadeAnewAndWhatIsLost) {
    constexpr std::string_view kList =
        R"({"Device": {"wan_pvid": {"1": {"name": "w", "pvid": 1}, "max_instance": 7}}})";
    EXPECT_EQ(explained(kList, "/Device/wan_pvid/max_instance"),
              R"({"pointer":"/Device/wan_pvid/max_instance","answer":"regenerated","effects":[]})");
    EXPECT_EQ(explained(R"({"lang": "en", "langs": 1})", "/langs"),
              R"({"pointer":"/langs","answer":"lost","effects":[]})");
    EXPECT_EQ(explained(R"({"": 1, "lang": "en"})", "/"), R"({"pointer":"/","answer":"lost","effects":[]})");
}

// It is used, although the result is the same without it.
TEST(Explain, SeesAMemberThatSaysWhatIsTheDefault) {
    constexpr std::string_view kText = R"({"ifaces": {"e": {"type": "ethernet", "services": )"
                                       R"({"i": {"type": "ip", "connection_status": "Disconnected"}}}}})";
    const std::string answer = explained(kText, "/ifaces/e/services/i/connection_status");
    EXPECT_EQ(answer, R"({"pointer":"/ifaces/e/services/i/connection_status","answer":"used","effects":[)"
                      R"({"pointer":"/Device/Ifaces/ethernet/1/services/ip/1/connection_status",)"
                      R"("with":"Disconnected","without":"Disconnected"}]})");
}

TEST(Explain, ComparesTheEntriesOfAListThatLosesOneAsAWhole) {
    EXPECT_EQ(explained(R"({"lan": ["br0", "br1"]})", "/lan/0"),
              R"({"pointer":"/lan/0","answer":"used","effects":[)"
              R"({"pointer":"/Device/Ifaces/lan/1","with":{"name":"br0"},"without":{"name":"br1"}},)"
              R"({"pointer":"/Device/Ifaces/lan/2","with":{"name":"br1"},"without":null},)"
              R"({"pointer":"/Device/Ifaces/lan/max_instance","with":2,"without":1}]})");
}

TEST(Explain, TakesAnyPointer) {
    EXPECT_NE(explained(R"({"lang": "en"})", "").find(R"("answer":"used")"), std::string::npos);
    EXPECT_NE(explained("{}", "").find(R"("effects":[])"), std::string::npos);
    EXPECT_EQ(explained(R"({"Firewall": {"a/b~": {"": [1, {"c": 2}]}}})", "/Firewall/a~1b~0//1/c"),
              R"({"pointer":"/Firewall/a~1b~0//1/c","answer":"used","effects":[)"
              R"({"pointer":"/Device/Firewall/a~1b~0//1/c","with":2,"without":null}]})");
}

void expect_wrong_usage(const k_text_request_t& request, const char* pointer, const char* message) {
    const Result result = ask(request);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_WRONG_USAGE) << message;
    EXPECT_EQ(output_of(result), "(none)");
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    EXPECT_STREQ(problem_of(result).pointer, pointer);
    EXPECT_NE(std::string(problem_of(result).message).find(message), std::string::npos) << problem_of(result).message;
}

TEST(Explain, RefusesAPointerToNothing) {
    constexpr std::string_view kText =
        "{\"lang\": \"en\",\n \"lan\": [\"br0\"], \"tr069\": {\"x\": \"{\\\"a\\\": 1}\"}}";
    expect_wrong_usage(request_for_member(kText, "/lann"), "", "leads to nothing");
    expect_wrong_usage(request_for_member(kText, "/lan/1/name"), "/lan", "leads to nothing");
    expect_wrong_usage(request_for_member(kText, "/lan/-"), "/lan", "leads to nothing");
    expect_wrong_usage(request_for_member(kText, "/lan/00"), "/lan", "leads to nothing");
    expect_wrong_usage(request_for_member(kText, "/tr069/x/a"), "/tr069/x", "leads into a text");
    expect_wrong_usage(request_for_member(kText, "lang"), nullptr, "no JSON Pointer");
    expect_wrong_usage(request_for_member(kText, "/a~2"), nullptr, "no JSON Pointer");
    expect_wrong_usage(request_for_member(kText, "/a~"), nullptr, "no JSON Pointer");
    expect_wrong_usage(request_for_member(kText, nullptr), nullptr, "needs a pointer");
    expect_wrong_usage(request_for_member(kText, "/Device/Ifaces/lan/2", K_TEXT_FROM_RESULT), nullptr,
                       "it goes as far as \"/Device/Ifaces/lan\"");
    const Result result = ask(request_for_member(kText, "/lan/1"));
    EXPECT_EQ(problem_of(result).which, K_TEXT_IN_TEXT);
    EXPECT_EQ(problem_of(result).line, 2u);
    EXPECT_EQ(problem_of(result).column, 9u);
}

TEST(Explain, AnswersOfWhatIsLeftOfARejectedText) {
    constexpr std::string_view kText =
        "{\"lang\": \"en\", \"max_table_id\": \"many\",\n \"httpaccess\": [{\"dport\": \"x\"}, {\"dport\": \"80\"}]}";
    const Result of_good = ask(request_for_member(kText, "/httpaccess/1/dport"));
    EXPECT_EQ(k_text_status(of_good.get()), K_TEXT_CONVERTED);
    EXPECT_NE(output_of(of_good).find(R"("pointer":"/httpaccess/1/dport","answer":"used")"), std::string::npos);
    EXPECT_NE(output_of(of_good).find(R"("with":80)"), std::string::npos) << output_of(of_good);
    ASSERT_EQ(k_text_problem_count(of_good.get()), 1u);
    EXPECT_EQ(problem_of(of_good).severity, K_TEXT_NOTE);
    EXPECT_STREQ(problem_of(of_good).function, "explain");

    const Result of_bad = ask(request_for_member(kText, "/max_table_id"));
    EXPECT_EQ(output_of(of_bad), R"({"pointer":"/max_table_id","answer":"lost","effects":[]})");
    ASSERT_EQ(k_text_problem_count(of_bad.get()), 3u);
    EXPECT_EQ(problem_of(of_bad, 0).severity, K_TEXT_ERROR);
    EXPECT_STREQ(problem_of(of_bad, 0).pointer, "/max_table_id");
    EXPECT_STREQ(problem_of(of_bad, 1).function, "partial");
    EXPECT_STREQ(problem_of(of_bad, 2).function, "explain");
}

// It could be used if it said something else; as it is it has been left out.
TEST(Explain, CallsLostWhatWasLeftOutWithAWarning) {
    const Result result = ask(request_for_member(R"({"ipsec": {"tunnels": [{"key": 5}]}})", "/ipsec/tunnels/0/key"));
    EXPECT_EQ(output_of(result), R"({"pointer":"/ipsec/tunnels/0/key","answer":"lost","effects":[]})");
    ASSERT_EQ(k_text_problem_count(result.get()), 1u);
    EXPECT_EQ(problem_of(result).severity, K_TEXT_WARNING);
    EXPECT_STREQ(problem_of(result).pointer, "/ipsec/tunnels/0/key");
}

// An element that stays may stand elsewhere when others have been left out.
TEST(Explain, CountsElementsAsTheTextHasThem) {
    constexpr std::string_view kText = R"({"Device": {"Services": {}}, "unknown": [1]})";
    EXPECT_NE(explained(kText, "/unknown/0").find("lost"), std::string::npos);
    constexpr std::string_view kUsers = R"({"macfilter": [{"id": {}}, {"id": 1, "mac": "02:00:5e:00:53:01"}]})";
    const std::string answer = explained(kUsers, "/macfilter/1/mac");
    EXPECT_NE(answer.find(R"("pointer":"/macfilter/1/mac","answer":"used")"), std::string::npos) << answer;
    EXPECT_NE(answer.find("02:00:5e:00:53:01"), std::string::npos) << answer;
    EXPECT_NE(explained(kUsers, "/macfilter/0/id").find("lost"), std::string::npos);
    const std::string place = answer.substr(answer.find("/Device"), answer.find("\",\"with") - answer.find("/Device"));
    EXPECT_NE(explained(kUsers, place.c_str(), K_TEXT_FROM_RESULT).find(R"({"pointer":"/macfilter/1/mac")"),
              std::string::npos)
        << explained(kUsers, place.c_str(), K_TEXT_FROM_RESULT);
}

TEST(Explain, SaysWhatAPlaceIsMadeOf) {
    constexpr std::string_view kText = R"({"lang": "en", "wan_pvid": {"wan1": 10, "wan2": 20}})";
    EXPECT_EQ(explained(kText, "/Device/wan_pvid/2/pvid", K_TEXT_FROM_RESULT),
              R"({"pointer":"/Device/wan_pvid/2/pvid","value":20,"sources":[)"
              R"({"pointer":"/wan_pvid/wan2","value":20,"without":null}]})");
    EXPECT_EQ(explained(kText, "/Device/wan_pvid/max_instance", K_TEXT_FROM_RESULT),
              R"({"pointer":"/Device/wan_pvid/max_instance","value":2,"sources":[)"
              R"({"pointer":"/wan_pvid/wan1","value":10,"without":1},)"
              R"({"pointer":"/wan_pvid/wan2","value":20,"without":1}]})");
    EXPECT_EQ(explained("{}", "/Device/Customization", K_TEXT_FROM_RESULT),
              R"({"pointer":"/Device/Customization","value":{},"sources":[]})");
}

// What alone makes a difference comes before what has to be there for the whole entry.
TEST(Explain, NamesTheMemberBeforeWhatIsAroundIt) {
    constexpr std::string_view kText = R"({"ifaces": {"eth4": {"type": "ethernet", "mac": "02:00:5e:00:53:01"}}})";
    EXPECT_EQ(explained(kText, "/Device/Ifaces/ethernet/1/mac", K_TEXT_FROM_RESULT),
              R"({"pointer":"/Device/Ifaces/ethernet/1/mac","value":"02:00:5e:00:53:01","sources":[)"
              R"({"pointer":"/ifaces/eth4/mac","value":"02:00:5e:00:53:01","without":null},)"
              R"({"pointer":"/ifaces/eth4/type","value":"ethernet","without":null}]})");
    constexpr std::string_view kPpp =
        R"({"ifaces": {"e": {"type": "ethernet", "services": {"p": {"type": "ppp", "username": "u"}}}}})";
    const std::string of_user =
        explained(kPpp, "/Device/Ifaces/ethernet/1/services/ppp/1/username", K_TEXT_FROM_RESULT);
    EXPECT_NE(of_user.find(R"("sources":[{"pointer":"/ifaces/e/services/p/username")"), std::string::npos) << of_user;
}

// Neither alone makes a difference.
TEST(Explain, FindsMembersThatStandInForEachOther) {
    const std::string section = R"({"links": {}, "filters": {"1": {"protocol": "tcp"}}})";
    const std::string text = R"({"qos": )" + section + R"(, "queuemanagement": )" + section + "}";
    const std::string answer = explained(text, "/Device/QoS/Classification/1/Protocol", K_TEXT_FROM_RESULT);
    EXPECT_NE(answer.find(R"({"pointer":"/qos/filters/1/protocol","value":"tcp","without":6})"), std::string::npos);
    EXPECT_NE(answer.find(R"("pointer":"/queuemanagement")"), std::string::npos);
    EXPECT_EQ(answer.find(R"("without":null)"), std::string::npos) << answer;
}

TEST(Explain, FindsTheDefaultThatAMemberSays) {
    constexpr std::string_view kText = R"({"ifaces": {"e": {"type": "ethernet", "services": )"
                                       R"({"i": {"type": "ip", "connection_status": "Disconnected"}}}}})";
    const std::string answer =
        explained(kText, "/Device/Ifaces/ethernet/1/services/ip/1/connection_status", K_TEXT_FROM_RESULT);
    EXPECT_NE(answer.find(R"({"pointer":"/ifaces/e/type")"), std::string::npos) << answer;
}

// In the places, in what they depend on, and inside of what is shown as a whole.
TEST(Explain, ShowsNoSecret) {
    constexpr std::string_view kText =
        R"({"default_pass": "hunter2", "lang": "en", "Firewall": {"a": {"psk": "hunter2"}}})";
    EXPECT_EQ(explained(kText, "/default_pass").find("hunter2"), std::string::npos);
    EXPECT_EQ(explained(kText, "/Firewall").find("hunter2"), std::string::npos);
    EXPECT_EQ(explained(kText, "/Device/Default_pass", K_TEXT_FROM_RESULT).find("hunter2"), std::string::npos);
    EXPECT_EQ(explained(kText, "/Device", K_TEXT_FROM_RESULT).find("hunter2"), std::string::npos);
    EXPECT_NE(explained(kText, "/default_pass").find(R"("with":"***","without":null)"), std::string::npos);
    EXPECT_NE(explained(kText, "/default_pass", K_TEXT_SHOW_SECRETS).find("hunter2"), std::string::npos);
    constexpr uint32_t kShownResult = K_TEXT_FROM_RESULT | K_TEXT_SHOW_SECRETS;
    EXPECT_NE(explained(kText, "/Device/Default_pass", kShownResult).find("hunter2"), std::string::npos);
}

TEST(Explain, FindsTheDirectionAndTheVlansOfADslDevice) {
    constexpr std::string_view kDsl =
        R"({"groups": {"ppp0": {"name": "a", "type": "L3", "wans": ["ppp0"], "lans": ["eth0"]}}, "ifaces": {}})";
    EXPECT_NE(explained(kDsl, "/groups/ppp0/name").find(R"("with":"a")"), std::string::npos)
        << explained(kDsl, "/groups/ppp0/name");
    EXPECT_EQ(k_text_direction(ask(request_for_member(kDsl, "/groups")).get()), K_TEXT_TO_NEW);
    EXPECT_EQ(k_text_direction(ask(request_for_member(R"({"Device": {}})", "")).get()), K_TEXT_TO_OLD);
    EXPECT_EQ(k_text_status(ask(request_for_member(R"({"lang": 1})", "/lang", K_TEXT_TOWARDS_OLD)).get()),
              K_TEXT_WRONG_LAYOUT);
}

TEST(Explain, HasNoAnswerWhereNothingIsConverted) {
    const Result unreadable = ask(request_for_member("[", ""));
    EXPECT_EQ(k_text_status(unreadable.get()), K_TEXT_UNREADABLE);
    EXPECT_EQ(output_of(unreadable), "(none)");
}

}  // namespace
