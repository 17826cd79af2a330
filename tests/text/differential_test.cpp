// The reader and the writer against Jansson's, over 80,000 texts.
#include "differential.h"

#include <gtest/gtest.h>

#include "generator.h"

namespace kcnvrt::text {

namespace {

constexpr uint64_t kTexts = 20000;
constexpr uint64_t kDamagedOfEach = 3;

struct Totals {
    size_t texts = 0;
    size_t accepted = 0;
    size_t sure = 0;
    size_t nul = 0;
    size_t values = 0;
};

void compare(const std::string& text, uint64_t number, Totals& totals) {
    const ReadOptions options{number % 2 == 0, number % 4 >= 2};
    const Layout layout{number % 5 == 0, static_cast<unsigned>(number % 32)};
    const Finding finding = compare_with_jansson(text, options, layout);
    EXPECT_EQ("", finding.problem) << "text " << number << ": " << text;
    ++totals.texts;
    totals.accepted += finding.is_accepted;
    totals.sure += finding.is_sure;
    totals.nul += finding.has_nul;
    totals.values += finding.values;
}

}  // namespace

TEST(Differential, TextsThatAreMade) {
    Totals totals;
    for (uint64_t number = 0; number < kTexts && !HasFailure(); number += sample_step())
        compare(text_number(number), number, totals);
    EXPECT_GT(totals.accepted, totals.texts * 8 / 10);
    EXPECT_GT(totals.sure, totals.accepted * 7 / 10) << "what is left to Jansson's parser is not tested";
    EXPECT_GT(totals.values, 10 * totals.texts);
}

TEST(Differential, TextsThatAreDamaged) {
    Totals totals;
    for (uint64_t number = 0; number < kDamagedOfEach * kTexts && !HasFailure(); number += sample_step())
        compare(damaged(text_number(number / kDamagedOfEach), number), number, totals);
    EXPECT_GT(totals.accepted, totals.texts / 20);
    EXPECT_GT(totals.texts - totals.accepted, totals.texts / 2);
    EXPECT_GT(totals.nul, 0U);
}

}  // namespace kcnvrt::text
