// The runner's own test: functions that break each of its rules, and cases that are written wrongly, must fail.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "allocations.h"
#include "case.h"
#include "check.h"
#include "k_err.h"

// What the handlers below keep although it is not theirs.
static std::vector<Tree> kept;

// Section handlers that the runner finds by name in this binary.
extern "C" {

int well_behaved(json_t* source, json_t* destination, k_err_t* err) {
    json_object_set(destination, "b", json_object_get(source, "a"));
    json_object_set(destination, "c", json_object_get(source, "a"));
    k_err_set(err, "well_behaved", 0, "one");
    k_err_set(err, "well_behaved", 0, "two");
    std::printf("printed\n");
    return 2;
}

int changes_its_source(json_t* source, json_t*, k_err_t*) {
    return json_object_del(source, "a");
}

int reorders_its_source(json_t* source, json_t*, k_err_t*) {
    json_t* const a = json_incref(json_object_get(source, "a"));
    json_object_del(source, "a");
    return json_object_set_new(source, "a", a);
}

int leaks_a_value(json_t*, json_t*, k_err_t*) {
    kept.emplace_back(json_array());
    return 0;
}

int leaks_a_reference(json_t* source, json_t*, k_err_t*) {
    kept.emplace_back(json_incref(source));
    return 0;
}

int remembers(json_t*, json_t* destination, k_err_t*) {
    static int calls = 0;
    return json_object_set_new(destination, "calls", json_integer(++calls));
}

int reports_elsewhere(json_t*, json_t*, k_err_t* err) {
    static const Tree elsewhere{json_pack("{s:i}", "a", 1)};
    k_err_set(err, "reports_elsewhere", 0, "one");
    k_err_place(err, elsewhere.get(), "a", 1);
    return 1;
}

int reports_twice(json_t* source, json_t*, k_err_t* err) {
    k_err_set(err, "f", 0, "one");
    k_err_place(err, source, "a/b", 3);
    k_err_set(err, "f", 0, "two");
    return 1;
}

int counts_what_it_leaves_out(json_t*, json_t*, k_err_t* err) {
    k_err_set(err, "f", 0, "one");
    k_err_leave_out(err, 0);
    return 1;
}

int leaves_out_what_it_counts(json_t*, json_t*, k_err_t* err) {
    return k_err_set(err, "f", 0, "one");
}

int needs_a_record(json_t*, json_t* destination, k_err_t* err) {
    return err == nullptr ? 0 : json_object_set_new(destination, "a", json_true());
}
}

namespace {

Case case_of_text(const std::string& text) {
    const auto file = std::filesystem::temp_directory_path() / ("runner_test_" + std::to_string(getpid()) + ".json");
    std::ofstream{file} << text;
    std::vector<Case> cases = load_cases(file.string());
    std::filesystem::remove(file);
    return std::move(cases.back());
}

// What the failures of a case say, one after the other; "" when it holds.
std::string failures_of(const std::string& members) {
    const Case tested = case_of_text("[{\"case\": \"it\", " + members + "}]");
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter{
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results};
        check(tested);
    }
    std::string messages;
    for (int i = 0; i < results.size(); ++i) messages += results.GetTestPartResult(i).message() + std::string{"\n"};
    return messages;
}

void expect_failure(const std::string& members, const std::string& what) {
    const std::string failures = failures_of(members);
    EXPECT_NE(failures.find(what), std::string::npos) << members << "\nfails with:\n" << failures;
}

const std::string kCall = R"("call": "well_behaved", "source": {"a": {"x": 1}}, )";
const std::string kOutput = R"("output": {"b": {"x": 1}, "c": {"x": 1}}, )";
const std::string kMessages = R"("messages": [["well_behaved", "one"], ["well_behaved", "two"]], )";
const std::string kRest = R"("result": 2, "stdout": "printed\n")";

TEST(Check, ACaseThatHolds) {
    EXPECT_EQ(failures_of(kCall + kOutput + kMessages + kRest), "");
    EXPECT_EQ(failures_of(kCall + kOutput + kMessages + "\"ordered\": true, " + kRest), "");
}

TEST(Check, Output) {
    expect_failure(kCall + R"("output": {"b": {"x": 2}, "c": {"x": 1}}, )" + kMessages + kRest, "first at \"/b/x\"");
    expect_failure(kCall + R"("output": {"b": {"x": 1}}, )" + kMessages + kRest, "first at \"/c (not expected)\"");
    expect_failure(kCall + R"("output": {"d": 1}, )" + kMessages + kRest, "first at \"/d (missing)\"");
    expect_failure(kCall + R"("output": {"b": {"x": 1.0}, "c": {"x": 1}}, )" + kMessages + kRest, "output differs");
    expect_failure(kCall + R"("output": null, )" + kMessages + kRest, "output differs");
}

TEST(Check, OrderOfTheOutputWhereItIsAskedFor) {
    const std::string output = R"("output": {"c": {"x": 1}, "b": {"x": 1}}, )";
    EXPECT_EQ(failures_of(kCall + output + kMessages + kRest), "");
    expect_failure(kCall + output + kMessages + "\"ordered\": true, " + kRest, "in this order of members");
}

TEST(Check, Result) {
    expect_failure(kCall + kOutput + kMessages + R"("result": 1, "stdout": "printed\n")", "result\nexpected: 1");
    expect_failure(kCall + kOutput + kMessages + R"("stdout": "printed\n")", "result\nexpected: 0");
}

TEST(Check, Messages) {
    expect_failure(kCall + kOutput + kRest, "messages\nexpected: none");
    expect_failure(kCall + kOutput + R"("messages": [["well_behaved", "one"]], )" + kRest, "messages");
    expect_failure(kCall + kOutput + R"("messages": [["well_behaved", "two"], ["well_behaved", "one"]], )" + kRest,
                   "messages");
    expect_failure(kCall + kOutput + R"("messages": [["other", "one"], ["well_behaved", "two"]], )" + kRest,
                   "messages");
}

TEST(Check, Pointers) {
    const std::string call = R"("call": "reports_twice", "source": {"a/b": 1}, "output": {}, "result": 1, )"
                             R"("messages": [["f", "one"], ["f", "two"]], )";
    EXPECT_EQ(failures_of(call + R"("pointers": ["/a~1b", ""])"), "");
    expect_failure(call + R"("pointers": ["/a~1b", null])", "pointers");
    expect_failure(call + R"("pointers": ["/a~1b"])", "pointers");
    expect_failure(call + R"("pointers": ["", "/a~1b"])", "pointers");
    expect_failure(call + R"("pointers": [])", "pointers");
}

TEST(Check, EveryMessageHasAPlaceInTheSource) {
    const std::string call = R"("call": "reports_elsewhere", "output": {}, "result": 1, )"
                             R"("messages": [["reports_elsewhere", "one"]])";
    expect_failure(call + R"(, "source": {"b": 1})", "belongs where the source has nothing");
    EXPECT_EQ(failures_of(call), "");
}

TEST(Check, WhatCountsIsWhatFails) {
    const std::string rest = R"("source": {}, "output": {}, "messages": [["f", "one"]])";
    expect_failure(R"("call": "counts_what_it_leaves_out", "result": 1, )" + rest, "no message counts");
    expect_failure(R"("call": "leaves_out_what_it_counts", )" + rest, "it has not failed");
}

TEST(Check, StandardOutput) {
    expect_failure(kCall + kOutput + kMessages + R"("result": 2)", "standard output");
    expect_failure(kCall + kOutput + kMessages + R"("result": 2, "stdout": "printed")", "standard output");
}

TEST(Check, InputsStayAsTheyAre) {
    expect_failure(R"("call": "changes_its_source", "source": {"a": 1}, "output": {})", "changed its inputs");
    expect_failure(R"("call": "reorders_its_source", "source": {"a": 1, "b": 2}, "output": {})", "changed its inputs");
}

TEST(Check, ASecondCallDoesTheSame) {
    expect_failure(R"("call": "remembers", "output": {"calls": 1})", "output of a second call");
}

TEST(Check, ANullRecordMakesNoDifference) {
    expect_failure(R"("call": "needs_a_record", "output": {"a": true})", "a call with a null error record");
}

TEST(Check, NothingLeaks) {
    expect_failure(R"("call": "leaks_a_value", "source": {}, "output": {})", "leaves blocks of Jansson's behind");
    expect_failure(R"("call": "leaks_a_reference", "source": {}, "output": {})", "leaves blocks of Jansson's behind");
}

TEST(Form, UnknownFunction) {
    expect_failure(R"("call": "no_such_function", "output": {})", "no function of the libraries");
    expect_failure(R"("call": "json_section_parser", "handler": "no_such_function", "output": {})",
                   "\"handler\" is not a function");
}

TEST(Form, MembersThatDoNotBelong) {
    expect_failure(R"("call": "well_behaved", "output": {}, "reslut": 2)", "\"reslut\" is no member");
    expect_failure(R"("call": "well_behaved", "output": {}, "flags": 1)", "\"flags\" is no member");
    expect_failure(R"("call": "k_cnvrt_to_old", "output": {}, "base": {})", "\"base\" is no member");
    expect_failure(R"("call": "getMaxKey", "output": {})", "\"output\" is no member");
    expect_failure(R"("call": "json_string_set_safe", "key": "a", "output": {}, "default": "")",
                   "\"default\" is no member");
}

TEST(Form, MembersThatAreMissingOrOfAnotherType) {
    expect_failure(R"("output": {})", "\"call\" is missing");
    expect_failure(R"("call": "well_behaved")", "\"output\" is missing");
    expect_failure(R"("call": "json_string_set_safe", "output": {})", "\"key\" is missing");
    expect_failure(R"("call": "well_behaved", "output": {}, "result": "1")", "\"result\" is not an integer");
    expect_failure(R"("call": "well_behaved", "output": {}, "stdout": 1)", "\"stdout\" is not a string");
    expect_failure(R"("call": "well_behaved", "output": {}, "ordered": 1)", "\"ordered\" is not true or false");
    expect_failure(R"("call": "well_behaved", "output": {}, "messages": [["f"]])", "\"messages\" is not an array");
    expect_failure(R"("call": "well_behaved", "output": {}, "messages": ["f"])", "\"messages\" is not an array");
    expect_failure(R"("call": "well_behaved", "output": {}, "pointers": "/a")", "\"pointers\" is not an array");
    expect_failure(R"("call": "well_behaved", "output": {}, "pointers": [1])", "\"pointers\" is not an array");
}

TEST(Form, Files) {
    EXPECT_EQ(case_of_text("[]").defects.size(), 1u);
    EXPECT_EQ(case_of_text("{}").defects.size(), 1u);
    EXPECT_EQ(case_of_text("[1]").defects.size(), 1u);
    EXPECT_EQ(case_of_text("[{\"call\": \"well_behaved\", \"output\": {}}]").defects.size(), 1u);
    EXPECT_NE(case_of_text("[{\"case\": \"a\",\n \"case\": \"b\"}]").defects.at(0).find("duplicate"),
              std::string::npos);
    const std::string twice = R"({"case": "same", "call": "well_behaved", "output": {}})";
    EXPECT_EQ(case_of_text("[" + twice + ", " + twice + "]").defects.size(), 1u);
}

TEST(Form, NamesAndLines) {
    const Case tested =
        case_of_text("[\n\n{\"case\": \"A \\\"b\\\" - c_1!\", \"call\": \"well_behaved\", \"output\": {}}]");
    EXPECT_EQ(tested.test, "A_b_c_1");
    EXPECT_EQ(tested.line, 3);
}

}  // namespace

int main(int argc, char** argv) {
    count_allocations();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
