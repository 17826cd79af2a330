// What can be converted of a document that is rejected: it has to be what the document without the noted places gives.
#include <gtest/gtest.h>
#include <jansson.h>

#include <cstring>
#include <vector>

#include "ask.h"
#include "values.h"

namespace {

Result ask_for_part(uint32_t operation, std::string_view text, uint32_t flags = 0) {
    k_text_request_t request = request_for(operation, text);
    request.flags = flags | K_TEXT_PARTIAL;
    return ask(request);
}

struct Note {
    std::string pointer;
    std::string message;
    size_t line;
    size_t column;
};

std::vector<Note> notes_of(const Result& result) {
    std::vector<Note> notes;
    for (size_t i = 0; i < k_text_problem_count(result.get()); ++i) {
        const k_text_problem_t problem = problem_of(result, i);
        if (std::strcmp(problem.function, "partial") != 0) continue;
        EXPECT_EQ(problem.severity, K_TEXT_NOTE);
        EXPECT_EQ(problem.which, K_TEXT_IN_TEXT);
        notes.push_back(
            {problem.pointer == nullptr ? "(none)" : problem.pointer, problem.message, problem.line, problem.column});
    }
    return notes;
}

// What is to go is first replaced by this, so that elements keep their indexes.
constexpr const char* kGone = "\x01 gone";

bool is_gone(const json_t* value) {
    return json_is_string(value) && std::strcmp(json_string_value(value), kGone) == 0;
}

// Names without "~" and "/".
void mark_as_gone(json_t* root, const std::string& pointer) {
    json_t* value = root;
    size_t start = 1;
    for (size_t end; (end = pointer.find('/', start)) != std::string::npos; start = end + 1) {
        const std::string token = pointer.substr(start, end - start);
        value = json_is_array(value) ? json_array_get(value, std::stoul(token)) : json_object_get(value, token.c_str());
    }
    const std::string token = pointer.substr(start);
    if (json_is_array(value)) {
        json_array_set_new(value, std::stoul(token), json_string(kGone));
    } else {
        json_object_set_new(value, token.c_str(), json_string(kGone));
    }
}

void sweep(json_t* value) {
    for (size_t i = json_array_size(value); i-- != 0;)
        if (is_gone(json_array_get(value, i))) json_array_remove(value, i);
    for (size_t i = 0; i < json_array_size(value); ++i) sweep(json_array_get(value, i));
    const char* name;
    json_t* member;
    void* next;
    json_object_foreach_safe(value, next, name, member) {
        if (is_gone(member)) {
            json_object_del(value, name);
        } else {
            sweep(member);
        }
    }
}

// Every value of a wrong type.
Tree damaged(json_t* value) {
    Tree copy(json_is_object(value)  ? json_object()
              : json_is_array(value) ? json_array()
                                     : json_pack("{s: i}", "no", 1));
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) json_object_set_new(copy.get(), name, damaged(member).release());
    for (size_t i = 0; i < json_array_size(value); ++i)
        json_array_append_new(copy.get(), damaged(json_array_get(value, i)).release());
    return copy;
}

// How many places were noted.
size_t expect_part(uint32_t operation, json_t* document, uint32_t flags = 0) {
    const std::string text = printed(document);
    const Result result = ask_for_part(operation, text, flags);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    const std::vector<Note> notes = notes_of(result);
    const Tree rest = parsed(text);
    for (const Note& note : notes) {
        mark_as_gone(rest.get(), note.pointer);
        EXPECT_EQ(note.line, 1u) << note.pointer;
    }
    sweep(rest.get());
    const std::string text_of_rest = printed(rest.get());
    k_text_request_t request_of_rest = request_for(operation, text_of_rest);
    request_of_rest.flags = flags;
    const Result of_rest = ask(request_of_rest);
    EXPECT_EQ(k_text_status(of_rest.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(output_of(result), output_of(of_rest));
    return notes.size();
}

TEST(Partial, IsTheRestOfTheDocument) {
    const Result result = ask_for_part(K_TEXT_TO_NEW, "{\"lang\": \"en\",\n \"max_table_id\": \"many\"}");
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_EQ(output_of(result), output_of(ask(request_for(K_TEXT_TO_NEW, R"({"lang": "en"})"))));
    ASSERT_EQ(k_text_problem_count(result.get()), 2u);
    EXPECT_EQ(problem_of(result).severity, K_TEXT_ERROR);
    const std::vector<Note> notes = notes_of(result);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0].pointer, "/max_table_id");
    EXPECT_EQ(notes[0].message, "left out of the partial result");
    EXPECT_EQ(notes[0].line, 2u);
    EXPECT_EQ(notes[0].column, 18u);
}

TEST(Partial, IsOnlyOfARejectedDocument) {
    const Result result = ask_for_part(K_TEXT_TO_NEW, R"({"lang": "en"})");
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_CONVERTED);
    EXPECT_EQ(k_text_problem_count(result.get()), 0u);
    EXPECT_EQ(output_of(ask(request_for(K_TEXT_TO_NEW, R"({"max_table_id": "many"})"))), "(none)");
}

TEST(Partial, IsOfSectionsToo) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_NEW, R"({"mbssid": [{"SSID": "x", "AuthMode": 1}]})");
    request.section = "WiFi";
    request.flags = K_TEXT_PARTIAL;
    const Result result = ask(request);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_NE(output_of(result).find(R"("mbssid":{"1":{"Ssid":"x"},"max_instance":1})"), std::string::npos);
    ASSERT_EQ(notes_of(result).size(), 1u);
    EXPECT_EQ(notes_of(result)[0].pointer, "/mbssid/0/AuthMode");
}

TEST(Partial, IsNothingWhereTheWholeIsWrong) {
    k_text_request_t request = request_for(K_TEXT_SECTION_TO_OLD, "{}");
    request.section = "users";
    request.flags = K_TEXT_PARTIAL;
    const Result result = ask(request);
    EXPECT_EQ(k_text_status(result.get()), K_TEXT_REJECTED);
    EXPECT_EQ(output_of(result), "(none)");
    ASSERT_EQ(notes_of(result).size(), 1u);
    EXPECT_EQ(notes_of(result)[0].pointer, "(none)");
    EXPECT_EQ(notes_of(result)[0].message, "there is no part that could be converted");
}

TEST(Partial, HasNothingToDoWithADifference) {
    k_text_request_t request = request_for(K_TEXT_TO_NEW, "{}", "{}");
    request.flags = K_TEXT_PARTIAL;
    EXPECT_EQ(k_text_status(ask(request).get()), K_TEXT_WRONG_USAGE);
}

// An element that goes must not move the places of those behind it, in any round.
TEST(Partial, NamesElementsByWhereTheyWere) {
    const Tree document = parsed(R"({"macfilter": [{"id": {}}, {"id": 1}, {"id": {}}, {"id": {}}, {"id": 2}]})");
    EXPECT_EQ(expect_part(K_TEXT_TO_NEW, document.get()), 6u);
}

// One round finds the messages of the document, a later one what the loss of members brings.
TEST(Partial, SaysWhyALaterRoundTookSomethingOut) {
    const Result result = ask_for_part(K_TEXT_TO_NEW, R"({"macfilter": [{"id": {}}]})");
    const std::vector<Note> notes = notes_of(result);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].pointer, "/macfilter/0/id");
    EXPECT_EQ(notes[0].message, "left out of the partial result");
    EXPECT_EQ(notes[1].pointer, "/macfilter/0");
    EXPECT_EQ(notes[1].message, "left out of the partial result: Invalid field \"id\", is not integer");
}

TEST(Partial, TakesOutMembersWhoseNamesPointersEscape) {
    const Result result = ask_for_part(
        K_TEXT_TO_NEW, R"({"vlan": {"vlans": [{"pos": 0, "ports": {"p/1~": {"qos": {}, "tag": true}}}]}})");
    ASSERT_EQ(notes_of(result).size(), 1u);
    EXPECT_EQ(notes_of(result)[0].pointer, "/vlan/vlans/0/ports/p~11~0/qos");
    EXPECT_NE(output_of(result).find(R"("name":"p/1~")"), std::string::npos);
}

TEST(Partial, SurvivesWhereNothingIsRight) {
    EXPECT_GT(expect_part(K_TEXT_TO_NEW, damaged(example("home-gateway.old.json").get()).get()), 100u);
    EXPECT_GT(expect_part(K_TEXT_TO_OLD, damaged(example("home-gateway.new.json").get()).get()), 100u);
    EXPECT_GT(expect_part(K_TEXT_TO_NEW, damaged(example("dsl-gateway.old.json").get()).get(), K_TEXT_DSL_VLAN), 10u);
    EXPECT_GT(expect_part(K_TEXT_TO_OLD, damaged(example("dsl-gateway.new.json").get()).get()), 3u);
}

// A converter that stops at its first failure is asked again only so often.
TEST(Partial, EndsSoonWhereEveryRoundFindsOneMore) {
    Tree document = parsed(R"({"vlan": {"vlans": []}})");
    json_t* const vlans = json_object_get(json_object_get(document.get(), "vlan"), "vlans");
    for (int i = 0; i < 3000; ++i) json_array_append_new(vlans, json_pack("{s: i, s: s}", "pos", 7, "name", "x"));
    expect_part(K_TEXT_TO_NEW, document.get());
}

}  // namespace
