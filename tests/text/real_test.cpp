// Reals, printed in both ways and read, against each other and against Jansson.
#include "json/real.h"

#include <gtest/gtest.h>
#include <jansson.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "generator.h"

namespace kcnvrt::text {

// real_stdio.cpp, which the test compiles under another name.
char* print_real_by_stdio(double value, char* place);

namespace {

constexpr uint64_t kNumbers = 1000000;

using Print = char*(double value, char* place);

std::string printed(Print print, double value) {
    std::array<char, kLongestReal> text;
    return {text.data(), print(value, text.data())};
}

double read(const std::string& text) {
    double value = -1;
    return read_real(text, value) ? value : std::nan("");
}

uint64_t bits(double value) {
    return std::bit_cast<uint64_t>(value);
}

struct Row {
    double value;
    const char* text;
};

class Printed : public testing::TestWithParam<Row> {};

TEST_P(Printed, InBothWays) {
    EXPECT_EQ(GetParam().text, printed(print_real, GetParam().value));
    EXPECT_EQ(GetParam().text, printed(print_real_by_stdio, GetParam().value));
    EXPECT_EQ(bits(GetParam().value), bits(read(GetParam().text)));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Real, Printed, testing::Values(
    Row{0.0, "0.0"}, Row{-0.0, "-0.0"}, Row{1.0, "1.0"}, Row{-1.0, "-1.0"}, Row{1.1, "1.1"}, Row{0.1, "0.1"},
    Row{100.0, "100.0"}, Row{123456.75, "123456.75"}, Row{0.3, "0.3"}, Row{0.1 + 0.2, "0.30000000000000004"},
    Row{0.0001, "0.0001"}, Row{0.00012, "0.00012"}, Row{0.00001, "1e-5"}, Row{0.0000123, "1.23e-5"},
    Row{1e15, "1000000000000000.0"}, Row{1e16, "10000000000000000.0"}, Row{1e17, "1e17"}, Row{1.5e17, "1.5e17"},
    Row{1e22, "1e22"}, Row{1e23, "1e23"}, Row{1e100, "1e100"}, Row{-1e-100, "-1e-100"},
    Row{9007199254740993.0, "9007199254740992.0"}, Row{123456789012345680.0, "1.2345678901234568e17"},
    Row{5e-324, "5e-324"}, Row{2.2250738585072014e-308, "2.2250738585072014e-308"},
    Row{1.7976931348623157e308, "1.7976931348623157e308"}));
// clang-format on

struct Reading {
    const char* text;
    double value;
};

class Read : public testing::TestWithParam<Reading> {};

TEST_P(Read, AsTheNearestDouble) {
    EXPECT_EQ(bits(GetParam().value), bits(read(GetParam().text)));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Real, Read, testing::Values(
    Reading{"1e0", 1}, Reading{"1E+2", 100}, Reading{"1e-2", 0.01}, Reading{"-0.0", -0.0}, Reading{"-0e9", -0.0},
    Reading{"1e-400", 0}, Reading{"-1e-400", -0.0}, Reading{"0e999999999999", 0}, Reading{"1e-999999999999", 0},
    Reading{"123456789012345e22", 123456789012345e22}, Reading{"1e22", 1e22}, Reading{"1e23", 1e23},
    Reading{"8.5e-22", 8.5e-22}, Reading{"1.00000000000000000000000000000000001", 1},
    Reading{"0.000000000000000000000000000000000000001", 1e-39}, Reading{"9007199254740993.0", 9007199254740992},
    Reading{"179769313486231580793e288", 1.7976931348623157e308}, Reading{"2.4703282292062328e-324", 5e-324}));
// clang-format on

// Bits in every order make numbers of every size; every other one has few digits.
double number(uint64_t i) {
    uint64_t mixed = (i + 1) * 0x9E3779B97F4A7C15;
    mixed ^= mixed >> 29;
    mixed *= 0xBF58476D1CE4E5B9;
    mixed ^= mixed >> 32;
    if (i % 2 == 0) return static_cast<double>(mixed >> 40) / std::pow(10, static_cast<int>(mixed % 12));
    return std::bit_cast<double>(mixed);
}

struct Mistakes {
    uint64_t numbers = 0;
    uint64_t shorter = 0;  // than Jansson's own text
};

void compare(double value, Mistakes& count) {
    if (!std::isfinite(value)) return;
    ++count.numbers;
    const std::string text = printed(print_real, value);
    ASSERT_EQ(text, printed(print_real_by_stdio, value));
    ASSERT_EQ(bits(value), bits(read(text))) << text;
    ASSERT_EQ(bits(value), bits(std::strtod(text.c_str(), nullptr))) << text;
    std::array<char, 64> theirs;
    json_t* const real = json_real(value);
    const size_t length = json_dumpb(real, theirs.data(), theirs.size(), JSON_ENCODE_ANY);
    json_decref(real);
    ASSERT_LE(text.size(), length) << text;
    ASSERT_EQ(bits(value), bits(read({theirs.data(), length}))) << text;
    count.shorter += text.size() < length;
}

}  // namespace

TEST(Real, AMillionNumbersAreAlikeInBothWays) {
    Mistakes count;
    const uint64_t step = sample_step();
    for (uint64_t i = 0; i < kNumbers && !HasFatalFailure(); i += step) compare(number(i), count);
    EXPECT_GT(count.numbers, kNumbers / step * 9 / 10);
    EXPECT_GT(count.shorter, kNumbers / step / 4);
}

TEST(Real, PowersOfTwoAndTheirNeighboursAreAlikeInBothWays) {
    Mistakes count;
    for (int power = -1074; power <= 1023 && !HasFatalFailure(); ++power) {
        const double value = std::ldexp(1, power);
        for (const double near : {value, std::nextafter(value, 0), std::nextafter(value, HUGE_VAL)})
            compare(near, count);
    }
    EXPECT_GT(count.numbers, 6000U);
}

TEST(Real, WhatNoDoubleHoldsIsNotRead) {
    double value = 0;
    for (const char* const text : {"1e309", "-1e309", "1.7976931348623159e308", "1e999999999999", "123e400"})
        EXPECT_FALSE(read_real(text, value)) << text;
}

}  // namespace kcnvrt::text
