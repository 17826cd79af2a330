// Memory that runs out, at every allocation in turn: the answer is the whole one, or says that there is none.
#include <gtest/gtest.h>
#include <jansson.h>

#include <cstdlib>
#include <vector>

#include "../unit/frame_memory.h"
#include "losses_in_lines.h"

namespace {

// The linker leads these to the allocations that fail, as it does those of the layer and the library.
void* allocate(size_t size) {
    return std::malloc(size);
}

void release(void* memory) {
    std::free(memory);
}

// All that a result tells.
struct Answer {
    int status = K_TEXT_OUT_OF_MEMORY;
    std::string output = "(none)";
    std::string problems;
    Lines losses;

    bool operator==(const Answer&) const = default;
};

void PrintTo(const Answer& answer, std::ostream* out) {
    *out << answer.status << "\n" << answer.output << "\n" << answer.problems;
    for (const std::string& loss : answer.losses) *out << loss << "\n";
}

Answer answer_of(const Result& result) {
    Answer answer{k_text_status(result.get()), output_of(result), "", losses_of(result)};
    for (size_t i = 0; i < k_text_problem_count(result.get()); ++i) {
        const k_text_problem_t problem = problem_of(result, i);
        answer.problems += std::to_string(problem.line) + ":" + std::to_string(problem.column) + " " +
                           (problem.pointer == nullptr ? "-" : problem.pointer) + " " + problem.function + " " +
                           problem.message + "\n";
    }
    return answer;
}

// Nothing may be printed, whatever fails.
template <typename Failure>
Answer answer_with(const k_text_request_t& request, size_t allocations) {
    Result result;
    testing::internal::CaptureStdout();
    {
        const Failure failure(allocations);
        result = ask(request);
    }
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    return answer_of(result);
}

// How many allocations there are to fail.
template <typename Failure>
size_t expect_whole_or_nothing(const k_text_request_t& request) {
    const Answer whole = answer_of(ask(request));
    EXPECT_NE(whole.status, K_TEXT_OUT_OF_MEMORY);
    size_t failures = 0;
    size_t silent = 0;
    // What succeeds in spite of failures is followed by what does not: only many such in a row are the end.
    for (size_t i = 0; silent < 200; ++i) {
        const Answer answer = answer_with<Failure>(request, i);
        if (answer.status == K_TEXT_OUT_OF_MEMORY) {
            EXPECT_EQ(answer.output, "(none)") << i;
            ++failures;
            silent = 0;
        } else {
            EXPECT_EQ(answer, whole) << i;
            ++silent;
        }
    }
    return failures;
}

class Memory : public testing::Test {
protected:
    static void SetUpTestSuite() { json_set_alloc_funcs(allocate, release); }

    static void expect(const k_text_request_t& request) {
        EXPECT_GT(expect_whole_or_nothing<OutOfMemory>(request), 3u);
        EXPECT_GT(expect_whole_or_nothing<OneFailure>(request), 3u);
    }
};

constexpr std::string_view kOld =
    R"({"lang": "a text of more than sixteen bytes \u00e9", "max_table_id": {}, 
        "macfilter": [{"id": {}}, {"id": 1}], "ipsec": {"key": 1},
        "ifaces": {"eth4": {"type": "ethernet", "services": {"ppp0": {"type": "ppp", "auth": "chap"}}}}})";
constexpr std::string_view kNew =
    R"({"Device": {"Roaming": {}, "Ifaces": {"max_table_id": {}}, "DeviceInfo": {"lang": "en"}}})";

TEST_F(Memory, RunsOutWhileAConfigurationIsConverted) {
    expect(request_for(K_TEXT_TO_NEW, R"({"lang": "en", "wan_pvid": {"a": 1.5}})"));
    expect(request_for(K_TEXT_TO_NEW, kOld));
    expect(request_for(K_TEXT_TO_OLD, kNew));
    expect(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})", R"({"Device": {}})"));
}

TEST_F(Memory, RunsOutWhileAPartIsConverted) {
    k_text_request_t request = request_for(K_TEXT_TO_NEW, kOld);
    request.flags = K_TEXT_PARTIAL;
    expect(request);
    request = request_for(K_TEXT_TO_OLD, kNew);
    request.flags = K_TEXT_PARTIAL;
    expect(request);
}

// Of a kind each, in both directions, and with a rejection on the way back.
TEST_F(Memory, RunsOutWhileLossesAreSought) {
    constexpr std::string_view kLossy = R"({"passwd": [], "x": {"pin": [1]}, "y~": true, "max_table_id": "12",
        "route": [{"ip": "10.0.0.0", "netmask": "255.0.0.0"}], "tr069": {"DeviceInfo": {"ModelName": "HG"}}})";
    constexpr std::string_view kNewLossy = R"({"Device": {"DeviceInfo": {"ModelName": "HG", "x": 1}, "Roaming": {},
        "Ifaces": {"ethernet": {"1": {"ifname_l2": "b"}, "3": {"ifname_l2": "a"}, "max_instance": 3}}}})";
    k_text_request_t request = request_for(K_TEXT_LOSSES, kLossy);
    request.flags = K_TEXT_TOWARDS_NEW;
    expect(request);
    request = request_for(K_TEXT_LOSSES, kNewLossy);
    request.flags = K_TEXT_TOWARDS_OLD;
    expect(request);
    request = request_for(K_TEXT_CHECK, kOld);
    request.flags = K_TEXT_TOWARDS_NEW;
    expect(request);
    request = request_for(K_TEXT_TO_NEW, R"({"lang": "en", "x": 1})");
    request.flags = K_TEXT_TELL_LOSSES;
    expect(request);
    request.flags = K_TEXT_STRICT;
    expect(request);
}

// Of each answer, of a text that is rejected, and of a place in the result.
TEST_F(Memory, RunsOutWhileAMemberIsExplained) {
    constexpr std::string_view kText = R"({"lang": "en", "x": 1, "lan": ["br0", "br1"], "default_pass": "hunter2",
        "httpaccess": [{"dport": {}}, {"dport": "80"}]})";
    for (const char* pointer :
         {"/lang", "/x", "/lan/0", "/default_pass", "/httpaccess/1/dport", "/httpaccess/0", "/y"}) {
        k_text_request_t request = request_for(K_TEXT_EXPLAIN, kText);
        request.pointer = pointer;
        expect(request);
    }
    for (const char* pointer : {"/Device/Ifaces/lan/2/name", "/Device/Customization", "/Device/x"}) {
        k_text_request_t request = request_for(K_TEXT_EXPLAIN, kText);
        request.pointer = pointer;
        request.flags = K_TEXT_FROM_RESULT;
        expect(request);
    }
}

TEST_F(Memory, RunsOutWhileASectionIsTakenOut) {
    k_text_request_t request =
        request_for(K_TEXT_SECTION_TO_NEW, R"({"wifi": {"mbssid": [{"AuthMode": 1}]}, "lan": []})");
    request.section = "WiFi";
    request.flags = K_TEXT_PARTIAL;
    expect(request);
    request = request_for(K_TEXT_SECTION_TO_NEW, R"({"wifi": {"mbssid": [{"AuthMode": 1}]}, "vlan": {}})");
    request.section = "WiFi";
    request.flags = K_TEXT_PARTIAL;
    expect(request);
    request.section = "QoS";
    expect(request);
}

TEST_F(Memory, RunsOutWhileASectionIsConverted) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_NEW, R"({"wan1": 1})");
    request.section = "wan_pvid";
    expect(request);
    request.section = "nosuch";
    expect(request);
}

TEST_F(Memory, RunsOutWhileTextsAreComparedAndChanged) {
    expect(request_for(K_TEXT_DIFF, R"({"a": 1})", R"({"a": 2})"));
    expect(request_for(K_TEXT_APPLY, R"({"a": 1})", R"([{"op": "add", "path": "/b", "value": [1]}])"));
    expect(request_for(K_TEXT_APPLY, R"({"a": 1})", R"([{"op": "add", "path": "/b/c", "value": [1]}])"));
}

// The parser, which is asked about a text that is wrong, may then take it for another kind of wrong one.
TEST_F(Memory, RunsOutWhileATextIsRefused) {
    for (const std::string_view text : {R"({"a": [1, {"b": "c"}, tru]})", R"({"a": 1, "a": 2})", "[1]"})
        for (size_t i = 0; i < 100; ++i) {
            const Answer answer = answer_with<OneFailure>(request_for(K_TEXT_TO_NEW, text), i);
            EXPECT_TRUE(answer.status == K_TEXT_OUT_OF_MEMORY || answer.status == K_TEXT_UNREADABLE);
            EXPECT_EQ(answer.output, "(none)");
        }
}

TEST_F(Memory, RunsOutWhileALineIsShown) {
    constexpr std::string_view kText = R"({"password": "hunter2", "b": [{"c": tru}]})";
    const Result result = ask(request_for(K_TEXT_TO_NEW, kText));
    k_text_excerpt_t excerpt = {};
    excerpt.size = sizeof excerpt;
    size_t failures = 0;
    for (int status = -1; status != 0; ++failures) {
        const OutOfMemory failure(failures);
        status = k_text_excerpt(result.get(), 0, kText.data(), kText.size(), 80, &excerpt);
    }
    EXPECT_GT(failures, 1u);
    EXPECT_STREQ(excerpt.line, R"({"password": ***, "b": [{"c": tru}]})");
}

}  // namespace
