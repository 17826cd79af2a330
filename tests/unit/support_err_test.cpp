// The error record: what is added, counted, and read again.
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include "k_err.h"

namespace {

class ErrorRecord : public testing::Test {
protected:
    ~ErrorRecord() override { k_err_free(err); }

    k_err_t* err = k_err_new();
};

TEST_F(ErrorRecord, StartsEmpty) {
    ASSERT_NE(err, nullptr);
    EXPECT_EQ(k_err_count(err), 0u);
    EXPECT_EQ(k_err_message(err, 0), nullptr);
}

TEST_F(ErrorRecord, KeepsMessagesInOrder) {
    k_err_set(err, "parse_dns", 12, "Invalid field \"%s\", is not integer", "ttl");
    k_err_set(err, "convert_links", -3, "%d of %d", 1, 2);
    ASSERT_EQ(k_err_count(err), 2u);
    EXPECT_STREQ(k_err_function(err, 0), "parse_dns");
    EXPECT_EQ(k_err_line(err, 0), 12);
    EXPECT_STREQ(k_err_message(err, 0), "Invalid field \"ttl\", is not integer");
    EXPECT_STREQ(k_err_function(err, 1), "convert_links");
    EXPECT_EQ(k_err_line(err, 1), -3);
    EXPECT_STREQ(k_err_message(err, 1), "1 of 2");
}

TEST_F(ErrorRecord, HasNothingBeyondTheLastMessage) {
    k_err_set(err, "f", 1, "text");
    EXPECT_EQ(k_err_function(err, 1), nullptr);
    EXPECT_EQ(k_err_line(err, 1), 0);
    EXPECT_EQ(k_err_message(err, 1), nullptr);
    EXPECT_EQ(k_err_message(err, static_cast<size_t>(-1)), nullptr);
}

TEST_F(ErrorRecord, HoldsThousandsOfMessages) {
    for (int i = 0; i < 5000; ++i) k_err_set(err, "count", i, "message %d", i);
    ASSERT_EQ(k_err_count(err), 5000u);
    for (int i = 0; i < 5000; ++i) {
        EXPECT_EQ(k_err_line(err, static_cast<size_t>(i)), i);
        EXPECT_EQ(k_err_message(err, static_cast<size_t>(i)), "message " + std::to_string(i));
    }
}

TEST_F(ErrorRecord, KeepsMessagesOfAnyLength) {
    for (const size_t length : {0u, 1u, 254u, 255u, 256u, 257u, 100000u}) {
        const std::string text(length, 'x');
        k_err_clear(err);
        k_err_set(err, "f", 0, "%s", text.c_str());
        ASSERT_EQ(k_err_count(err), 1u);
        EXPECT_EQ(k_err_message(err, 0), text);
    }
}

TEST_F(ErrorRecord, CopiesBothTexts) {
    char function[] = "function";
    char argument[] = "argument";
    k_err_set(err, function, 0, "%s", argument);
    function[0] = argument[0] = '?';
    EXPECT_STREQ(k_err_function(err, 0), "function");
    EXPECT_STREQ(k_err_message(err, 0), "argument");
}

TEST_F(ErrorRecord, KeepsLineBreaksAndPercentSigns) {
    k_err_set(err, "f", 0, "Error allocated memory!\n");
    k_err_set(err, "f", 0, "%s", "100%s");
    EXPECT_STREQ(k_err_message(err, 0), "Error allocated memory!\n");
    EXPECT_STREQ(k_err_message(err, 1), "100%s");
}

// Half of a surrogate pair is no character of any encoding.
TEST_F(ErrorRecord, LeavesOutWhatCannotBePrinted) {
    const wchar_t half[] = {wchar_t{0xd800}, 0};
    k_err_set(err, "f", 0, "%ls", half);
    EXPECT_EQ(k_err_count(err), 0u);
    k_err_set(err, "f", 0, "%s", "after that");
    ASSERT_EQ(k_err_count(err), 1u);
    EXPECT_STREQ(k_err_message(err, 0), "after that");
}

TEST_F(ErrorRecord, CanBeUsedAgainAfterClear) {
    k_err_set(err, "first", 1, "one");
    k_err_clear(err);
    EXPECT_EQ(k_err_count(err), 0u);
    EXPECT_EQ(k_err_message(err, 0), nullptr);
    k_err_set(err, "second", 2, "two");
    ASSERT_EQ(k_err_count(err), 1u);
    EXPECT_STREQ(k_err_message(err, 0), "two");
}

TEST_F(ErrorRecord, TakesNullTexts) {
    const char* no_format = nullptr;
    k_err_set(err, nullptr, 4, "text");
    k_err_set(err, "f", 4, no_format, 0);
    ASSERT_EQ(k_err_count(err), 1u);
    EXPECT_STREQ(k_err_function(err, 0), "");
    EXPECT_STREQ(k_err_message(err, 0), "text");
}

TEST_F(ErrorRecord, AlwaysReturnsZero) {
    EXPECT_EQ(k_err_set(err, "f", 0, "text"), 0);
    EXPECT_EQ(k_err_set(nullptr, "f", 0, "text"), 0);
}

[[gnu::format(printf, 2, 3)]] void report(k_err_t* err, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err, "report", 7, format, arguments);
    va_end(arguments);
}

TEST_F(ErrorRecord, TakesAnArgumentList) {
    const std::string text(300, 'y');
    report(err, "%s=%d", "a", 5);
    report(err, "%s%d", text.c_str(), 6);
    ASSERT_EQ(k_err_count(err), 2u);
    EXPECT_STREQ(k_err_function(err, 0), "report");
    EXPECT_EQ(k_err_line(err, 0), 7);
    EXPECT_STREQ(k_err_message(err, 0), "a=5");
    EXPECT_EQ(k_err_message(err, 1), text + "6");
}

TEST_F(ErrorRecord, KnowsWhatCounted) {
    for (int i = 0; i < 4; ++i) k_err_set(err, "f", i, "text");
    k_err_leave_out(err, 2);
    k_err_leave_out(err, 4);
    k_err_set(err, "f", 4, "text");
    const int counted[] = {1, 1, 0, 0, 1};
    for (size_t i = 0; i < 5; ++i) EXPECT_EQ(k_err_is_counted(err, i), counted[i]) << i;
    EXPECT_EQ(k_err_is_counted(err, 5), 0);
    k_err_clear(err);
    EXPECT_EQ(k_err_is_counted(err, 0), 0);
}

TEST_F(ErrorRecord, KnowsThatAnAllocationFailed) {
    EXPECT_EQ(k_err_is_complete(err), 1);
    k_err_set(err, "f", 0, "text");
    EXPECT_EQ(k_err_is_complete(err), 1);
    k_err_no_memory();
    EXPECT_EQ(k_err_is_complete(err), 0);
    k_err_t* later = k_err_new();
    EXPECT_EQ(k_err_is_complete(later), 1);
    k_err_free(later);
    EXPECT_EQ(k_err_is_complete(err), 0);
    k_err_clear(err);
    EXPECT_EQ(k_err_is_complete(err), 1);
}

TEST_F(ErrorRecord, KeepsWhatWouldBePrinted) {
    k_err_keep_printed(err);
    testing::internal::CaptureStdout();
    k_err_print(err, "one");
    k_err_print(err, "");
    k_err_print(err, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    ASSERT_EQ(k_err_printed_count(err), 2u);
    EXPECT_STREQ(k_err_printed(err, 0), "one");
    EXPECT_STREQ(k_err_printed(err, 1), "");
    EXPECT_EQ(k_err_printed(err, 2), nullptr);
    EXPECT_EQ(k_err_count(err), 0u);
    k_err_clear(err);
    EXPECT_EQ(k_err_printed_count(err), 0u);
    k_err_print(err, "two");
    EXPECT_STREQ(k_err_printed(err, 0), "two");
}

TEST_F(ErrorRecord, PrintsUnlessItIsToKeepIt) {
    testing::internal::CaptureStdout();
    k_err_print(err, "one");
    k_err_print(nullptr, "two");
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "one\ntwo\n");
    EXPECT_EQ(k_err_printed_count(err), 0u);
    EXPECT_EQ(k_err_printed(err, 0), nullptr);
}

TEST(NullErrorRecord, RecordsNothing) {
    k_err_set(nullptr, "f", 1, "text %s", "x");
    report(nullptr, "text %s", "x");
    k_err_clear(nullptr);
    k_err_free(nullptr);
    EXPECT_EQ(k_err_count(nullptr), 0u);
    EXPECT_EQ(k_err_function(nullptr, 0), nullptr);
    EXPECT_EQ(k_err_line(nullptr, 0), 0);
    EXPECT_EQ(k_err_message(nullptr, 0), nullptr);
    k_err_leave_out(nullptr, 0);
    k_err_keep_printed(nullptr);
    EXPECT_EQ(k_err_is_counted(nullptr, 0), 0);
    EXPECT_EQ(k_err_is_complete(nullptr), 0);
    EXPECT_EQ(k_err_printed_count(nullptr), 0u);
    EXPECT_EQ(k_err_printed(nullptr, 0), nullptr);
}

}  // namespace
