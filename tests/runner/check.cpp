// One expectation after the other, each with what is there instead.
#include "check.h"

#include <gtest/gtest.h>

#include "call.h"

namespace {

void fail(const Case& tested, const std::string& what) {
    ADD_FAILURE_AT(tested.file.c_str(), tested.line) << tested.sentence << "\n" << what;
}

void expect(const Case& tested, bool holds, const std::string& what) {
    if (!holds) fail(tested, what);
}

void expect_equal(const Case& tested, const std::string& what, const std::string& expected, const std::string& actual) {
    if (expected != actual) fail(tested, what + "\nexpected: " + expected + "\nactual:   " + actual);
}

const json_t* expected_of(const Case& tested, const char* name) {
    return json_object_get(tested.data.get(), name);
}

// One message a line, each as the case files write it.
std::string listed(const std::vector<std::pair<std::string, std::string>>& messages) {
    std::string text;
    for (const auto& [function, message] : messages) {
        const Tree pair{json_pack("[ss]", function.c_str(), message.c_str())};
        text += "\n  " + text_of(pair.get());
    }
    return text.empty() ? "none" : text;
}

std::string expected_messages(const Case& tested) {
    const json_t* messages = expected_of(tested, "messages");
    std::string text;
    for (size_t i = 0; i < json_array_size(messages); ++i) text += "\n  " + text_of(json_array_get(messages, i));
    return text.empty() ? "none" : text;
}

std::string expected_text(const Case& tested, const char* name) {
    const json_t* text = expected_of(tested, name);
    return text == nullptr ? "" : json_string_value(text);
}

void check_output(const Case& tested, const Outcome& outcome) {
    const json_t* expected = expected_of(tested, "output");
    if (!outcome.output_fits) {
        const Tree actual{json_loads(outcome.output.c_str(), JSON_DECODE_ANY | JSON_ALLOW_NUL, nullptr)};
        fail(tested, "output differs, first at \"" + outcome.difference +
                         "\"\nexpected: " + text_of(expected, Layout::kIndented) +
                         "\nactual:   " + (actual ? text_of(actual.get(), Layout::kIndented) : outcome.output));
    } else if (json_is_true(expected_of(tested, "ordered"))) {
        expect_equal(tested, "output in this order of members", text_of(expected), outcome.output);
    }
}

// One place a line; nothing where the case does not say.
std::string expected_pointers(const Case& tested, const std::string& otherwise) {
    const json_t* pointers = expected_of(tested, "pointers");
    if (pointers == nullptr) return otherwise;
    std::string text;
    for (size_t i = 0; i < json_array_size(pointers); ++i) text += "\n  " + text_of(json_array_get(pointers, i));
    return text;
}

void check_places(const Case& tested, const Outcome& outcome) {
    std::string actual;
    for (const std::string& pointer : outcome.pointers) actual += "\n  " + pointer;
    expect_equal(tested, "pointers", expected_pointers(tested, actual), actual);
    for (const std::string& pointer : outcome.places_that_are_not)
        fail(tested, "a message belongs where the source has nothing: " + pointer);
}

// What counts withholds the result, or is in the count of failures; a difference to a base is made all the same.
void check_counted(const Case& tested, const Outcome& outcome) {
    const bool has_base = expected_of(tested, "base") != nullptr && expected_of(tested, "source") != nullptr;
    if (outcome.messages.empty() || has_base) return;
    const bool has_failed = outcome.result != 0 || outcome.output == text_of(nullptr);
    expect(tested, has_failed == outcome.has_counted,
           has_failed ? "it failed, and no message counts" : "a message counts, and it has not failed");
}

void check_manners(const Case& tested, const Outcome& outcome, const std::string& which) {
    expect(tested, outcome.inputs_unchanged, which + " changed its inputs");
    expect(tested, outcome.output_stands_alone, which + " returned an output that changes when the source is released");
    expect_equal(tested, which + " leaves blocks of Jansson's behind", "0", std::to_string(outcome.leaked));
}

void check_again(const Case& tested, const Outcome& first, const Outcome& again, const std::string& which) {
    check_manners(tested, again, which);
    expect_equal(tested, "output of " + which, first.output, again.output);
    expect_equal(tested, "result of " + which, std::to_string(first.result), std::to_string(again.result));
    expect_equal(tested, "standard output of " + which, first.printed, again.printed);
}

}  // namespace

void check(const Case& tested) {
    for (const std::string& defect : tested.defects) fail(tested, defect);
    if (!tested.defects.empty()) return;

    const json_t* data = tested.data.get();
    const Outcome first = run_call(data, Record::kGiven);
    const auto result = static_cast<int>(json_integer_value(expected_of(tested, "result")));
    expect_equal(tested, "result", std::to_string(result), std::to_string(first.result));
    check_output(tested, first);
    expect_equal(tested, "messages", expected_messages(tested), listed(first.messages));
    check_places(tested, first);
    check_counted(tested, first);
    expect_equal(tested, "standard output", expected_text(tested, "stdout"), first.printed);
    check_manners(tested, first, "the call");

    const Outcome second = run_call(data, Record::kGiven);
    check_again(tested, first, second, "a second call");
    expect_equal(tested, "messages of a second call", listed(first.messages), listed(second.messages));
    check_again(tested, first, run_call(data, Record::kNull), "a call with a null error record");
}
