// A configuration that goes to the other layout and back comes back as it was, less the losses that losses.json
// declares.
//
// Each section of the examples is a test in each direction: generated documents of that section are converted there and
// back as whole documents, without a message, and compared member by member with what the losses leave of them. The
// list of losses that the text layer gives has to say the same.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>

#include "difference.h"
#include "generator.h"
#include "k_cnvrt.h"
#include "losses.h"
#include "sampling.h"
#include "sections.h"
#include "silence.h"
#include "table_visits.h"
#include "told_losses.h"
#include "value_at.h"
#include "word_places.h"

namespace {

TableVisits table_visits;

const std::vector<Row>& values() {
    static const std::vector<Row> rows = load_rows(KCNVRT_LAWS "/values.json");
    return rows;
}

const std::vector<Row>& losses() {
    static const std::vector<Row> rows = load_rows(KCNVRT_LAWS "/losses.json");
    return rows;
}

struct Converted {
    Tree document;
    std::string messages;

    bool is_silent() const { return document != nullptr && messages.empty(); }
};

Converted converted_from(Side side, json_t* document, uint8_t flags) {
    const Silence silence;
    k_err_t* err = k_err_new();
    Converted result{
        Tree{side == Side::kOld ? k_cnvrt_to_new(document, nullptr, flags, err) : k_cnvrt_to_old(document, flags, err)},
        ""};
    for (size_t i = 0; i < k_err_count(err); ++i)
        result.messages += std::string{"\n  "} + k_err_function(err, i) + ": " + k_err_message(err, i);
    k_err_free(err);
    return result;
}

// What went in at a place, and what came out that should not have.
std::string described(json_t* document, const Difference& difference) {
    json_t* in = value_at(document, difference.path);
    const bool is_loss_declared = in != difference.expected && !json_equal(in, difference.expected);
    return "/" + difference.path + "\n  in:  " + shown(in) + "\n  out: " + shown(difference.actual) +
           (is_loss_declared ? "\n  with the declared losses: " + shown(difference.expected) : "");
}

// What is wrong with the way of one document there and back; "" when nothing is.
std::string defect_of(Side side, json_t* document, uint8_t flags, const Losses& losses) {
    const WordPlaces words{side, document};
    const Converted there = converted_from(side, document, flags);
    if (!there.is_silent()) return "on the way there:" + there.messages;
    const Converted back = converted_from(side == Side::kOld ? Side::kNew : Side::kOld, there.document.get(), flags);
    if (!back.is_silent()) return "on the way back:" + back.messages;
    const Tree expected = losses.apply_to(document, words);
    const auto difference = difference_between(expected.get(), back.document.get());
    if (difference) return described(document, *difference);
    return defect_of_told_losses(side, document, (flags & K_CNVRT_DSL_VLAN) != 0, back.document.get());
}

class Laws : public testing::TestWithParam<Section> {};

// How many documents are made of a section, and at most how many times as many where chance leaves something out.
constexpr size_t kDocuments = 300;
constexpr size_t kMost = 5;

// A sanitized build makes too few documents for that.
bool are_all_visited() {
    return repetitions(kDocuments) == kDocuments;
}

struct Totals {
    size_t documents = 0;
    size_t fields = 0;
    size_t branches = 0;
};
Totals totals;

TEST_P(Laws, ComeBackButForTheDeclaredLosses) {
    const auto& [name, side, example] = GetParam();
    const WordPlaces words{side, example.get()};
    converted_from(side, example.get(), 0);
    Generator generator{side, values(), words, 1};
    const Losses declared{side, losses(), example.get()};
    const size_t least = repetitions(is_thorough() ? 5000 : kDocuments);
    size_t documents = 0;
    do {
        for (const size_t end = documents + least; documents < end; ++documents) {
            const Tree document = with_users(side, generator.like(example.get()));
            const std::string defect = defect_of(side, document.get(), 0, declared);
            if (!defect.empty()) FAIL() << defect;
        }
    } while (are_all_visited() && !generator.unvisited().empty() && documents < kMost * least);
    if (are_all_visited()) {
        for (const std::string& field : generator.unvisited()) ADD_FAILURE() << "never visited: " << field;
    }
    totals.documents += documents;
    totals.fields += generator.visits().fields();
    totals.branches += generator.visits().branches();
}

INSTANTIATE_TEST_SUITE_P(Section, Laws, testing::ValuesIn(sections_of_examples()), [](const auto& tested) {
    std::string name = tested.param.name + (tested.param.side == Side::kOld ? "_from_old" : "_from_new");
    for (char& character : name)
        if (std::isalnum(static_cast<unsigned char>(character)) == 0) character = '_';
    return name;
});

struct Whole {
    const char* name;
    Side side;
    uint8_t flags;
};

// The examples as they stand, where sections meet.
TEST(WholeExamples, ComeBackButForTheDeclaredLosses) {
    constexpr Whole kExamples[] = {
        {"home-gateway.old.json", Side::kOld, 0},
        {"home-gateway.new.json", Side::kNew, 0},
        {"dsl-gateway.old.json", Side::kOld, K_CNVRT_DSL_VLAN},
        {"dsl-gateway.new.json", Side::kNew, K_CNVRT_DSL_VLAN},
    };
    for (const Whole& example : kExamples) {
        const Tree document = load_example(example.name);
        const Losses declared{example.side, losses(), document.get()};
        const std::string defect = defect_of(example.side, document.get(), example.flags, declared);
        if (!defect.empty()) ADD_FAILURE() << example.name << ' ' << defect;
    }
}

// A row of the documentation's table.
void print_row(const char* what, size_t count) {
    std::printf("| %s | %zu |\n", what, count);
}

// Runs after the tests above, whose conversions it counts. What was not visited says something only of a run of all of
// them, none of which stopped early.
class Totality : public testing::Environment {
public:
    void TearDown() override {
        print_row("documents", totals.documents);
        print_row("fields of theirs", totals.fields);
        print_row("branches: a field there or absent, its values, the lengths of a list", totals.branches);
        print_row("tables, each direction", table_visits.tables());
        print_row("rows of tables", table_visits.fields());
        const testing::UnitTest& run = *testing::UnitTest::GetInstance();
        if (run.Failed() || run.test_to_run_count() < run.total_test_count() || !are_all_visited()) return;
        for (const Row& row : losses())
            if (row.seen == 0) ADD_FAILURE() << "no loss: " << json_string_value(row["loss"]) << ' ' << row.text;
        for (const std::string& field : table_visits.unvisited()) ADD_FAILURE() << "never run with a value: " << field;
    }
};

[[maybe_unused]] testing::Environment* const kTotality = testing::AddGlobalTestEnvironment(new Totality);

}  // namespace
