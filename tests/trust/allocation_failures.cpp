// Every allocation fails, once each and from then on: nothing crashes, nothing leaks, the source stays as it was, and
// the result is a tree that can be walked and printed, or null. The record says that something may be missing, or
// nothing is.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>

#include "conversions.h"
#include "examples.h"
#include "fingerprint.h"
#include "k_cnvrt.h"
#include "k_conf.h"
#include "replacements.h"
#include "sampling.h"
#include "shortage.h"
#include "silence.h"

namespace {

struct Totals {
    long conversions = 0;
    long allocations = 0;
    long visited = 0;
    long complete = 0;  // as the record says
};

Totals totals;  // of one test
Totals of_all;

int print_nothing(const char*, size_t, void*) {
    return 0;
}

// Walks every node, and prints the tree.
bool is_well_formed(const json_t* tree) {
    static_cast<void>(fingerprint(tree));
    return tree == nullptr || json_dump_callback(tree, print_nothing, nullptr, JSON_ENCODE_ANY) == 0;
}

struct Run {
    json_t* result;
    k_err_t* err;
    bool has_failed;
};

Run run(const Conversion& conversion, long allocation, Failing failing) {
    const Silence silence;
    start_shortage(allocation, failing);
    k_err_t* err = k_err_new();
    json_t* result = conversion.run(conversion.source.get(), err);
    return {result, err, end_shortage()};
}

// What a run gives that gets all the memory it asks for.
struct Whole {
    Tree result;
    size_t messages;
    long allocations;
};

Whole run_whole(const Conversion& conversion) {
    const auto [result, err, has_failed] = run(conversion, LONG_MAX, Failing::kOnce);
    Whole whole{Tree{result}, k_err_count(err), allocations_asked_for()};
    EXPECT_EQ(1, k_err_is_complete(err)) << conversion.name;
    k_err_free(err);
    return whole;
}

bool equals(const json_t* result, const Whole& whole) {
    return result == nullptr ? whole.result == nullptr : json_equal(result, whole.result.get()) != 0;
}

// One run, the record included, with one allocation failing. Whether any did.
bool run_short_of_memory(const Conversion& conversion, uint64_t source, const Whole& whole, long allocation,
                         Failing failing) {
    const long live = live_blocks();
    auto [result, err, has_failed] = run(conversion, allocation, failing);
    EXPECT_TRUE(is_well_formed(result)) << conversion.name << ", allocation " << allocation;
    if (k_err_is_complete(err) != 0) {
        ++totals.complete;
        EXPECT_TRUE(equals(result, whole)) << conversion.name << ", allocation " << allocation;
        EXPECT_EQ(whole.messages, k_err_count(err)) << conversion.name << ", allocation " << allocation;
    }
    EXPECT_TRUE(has_failed || k_err_is_complete(err) != 0) << conversion.name;
    json_decref(result);
    k_err_free(err);
    EXPECT_EQ(live, live_blocks()) << conversion.name << ", allocation " << allocation;
    EXPECT_EQ(source, fingerprint(conversion.source.get())) << conversion.name << ", allocation " << allocation;
    return has_failed;
}

// Ends with the run that needs no more failures.
void fail_each(const Conversion& conversion, const Whole& whole, Failing failing, long step) {
    const uint64_t source = fingerprint(conversion.source.get());
    for (long allocation = 0; run_short_of_memory(conversion, source, whole, allocation, failing); allocation += step) {
        ++totals.visited;
        if (testing::Test::HasFailure()) return;
    }
}

// Every allocation in turn, or in steps that make about so many visits; fewer in a slow build.
void fail_each(const Conversion& conversion, long visits = LONG_MAX) {
    if (!is_fast() && !is_thorough()) visits = std::min(visits, 400L) / static_cast<long>(stride(1));
    const Whole whole = run_whole(conversion);
    const long step = 1 + whole.allocations / visits;
    fail_each(conversion, whole, Failing::kOnce, step);
    fail_each(conversion, whole, Failing::kFromThenOn, step);
    ++totals.conversions;
    totals.allocations += whole.allocations;
}

// A row of the documentation's table.
void print_row(const char* name, const Totals& row) {
    std::printf("| %s | %ld | %ld | %ld | %ld |\n", name, row.conversions, row.allocations, row.visited,
                row.complete - 2 * row.conversions);
}

class AllocationFailures : public testing::Test {
protected:
    void SetUp() override { totals = {}; }

    static void print_as(const char* name) {
        print_row(name, totals);
        of_all.conversions += totals.conversions;
        of_all.allocations += totals.allocations;
        of_all.visited += totals.visited;
        of_all.complete += totals.complete;
    }
};

// A document whose every leaf is a real number, which no converter expects: messages everywhere.
Tree of_wrong_types(Tree document) {
    for (const Place& place : places_in(document.get()))
        if (is_leaf(place.value.get())) put(place, Tree{json_real(0.5)});
    return document;
}

json_t* pair_of(const json_t* base, const json_t* other) {
    json_t* pair = json_object();
    json_object_set_new(pair, "base", json_deep_copy(base));
    json_object_set_new(pair, "other", json_deep_copy(other));
    return pair;
}

Conversion difference(const char* name, const json_t* base, const json_t* other, unsigned flag) {
    return {name, Tree{pair_of(base, other)}, [flag](json_t* pair, k_err_t* err) {
                return k_conf_diff_set2(json_object_get(pair, "base"), json_object_get(pair, "other"), 0, flag, err);
            }};
}

Conversion application(const char* name, const json_t* base, const json_t* other, unsigned flag) {
    const Tree patch{k_conf_diff_set2(const_cast<json_t*>(base), const_cast<json_t*>(other), 0, flag, nullptr)};
    return {name, Tree{pair_of(base, patch.get())}, [](json_t* pair, k_err_t* err) {
                return k_conf_apply(json_object_get(pair, "base"), json_object_get(pair, "other"), err);
            }};
}

// The example with every seventh leaf changed.
Tree edited(Tree document) {
    size_t count = 0;
    for (const Place& place : places_in(document.get()))
        if (is_leaf(place.value.get()) && ++count % 7 == 0) put(place, Tree{json_string("edited")});
    return document;
}

TEST_F(AllocationFailures, InConversionsOfTheExamples) {
    for (const Conversion& conversion : conversions_of(old_example().get(), new_example().get())) {
        ASSERT_NE(nullptr, conversion.source) << conversion.name;
        fail_each(conversion);
    }
    print_as("of the examples");
}

TEST_F(AllocationFailures, InConversionsThatReportMuch) {
    const Tree old_document = of_wrong_types(old_example());
    const Tree new_document = of_wrong_types(new_example());
    for (const Conversion& conversion : conversions_of(old_document.get(), new_document.get())) fail_each(conversion);
    print_as("of documents with a value of a wrong type everywhere");
}

// Every object and array of a document with forty entries more: what the library keeps on its stack for a few, it
// allocates for many.
Tree widened(Tree document) {
    for (const Place& place : places_in(document.get())) {
        for (int number = 101; number <= 140; ++number) {
            json_array_append_new(place.value.get(), json_object());
            json_object_set_new(place.value.get(), std::to_string(number).c_str(), json_object());
        }
    }
    return document;
}

TEST_F(AllocationFailures, InConversionsOfWideDocuments) {
    const Tree old_document = widened(old_example());
    const Tree new_document = widened(new_example());
    for (const Conversion& conversion : conversions_of(old_document.get(), new_document.get()))
        fail_each(conversion, 50);
    print_as("of wide documents");
}

// Texts that grow, of lengths around those at which a growing text needs more memory.
TEST_F(AllocationFailures, InTextsOfEveryLength) {
    for (size_t length = 1; length <= 70; ++length) {
        const std::string text(length, 'a');
        Tree routes{json_pack("[{s:s}]", "ip", text.c_str())};
        fail_each({"a route to " + text, std::move(routes), [](json_t* source, k_err_t* err) {
                       return k_cnvrt_get_section_to_new("Static", source, nullptr, 0, err);
                   }});
    }
    print_as("of texts of every length");
}

TEST_F(AllocationFailures, InDifferences) {
    const Tree base = new_example();
    const Tree other = edited(new_example());
    fail_each(difference("patch", base.get(), other.get(), K_CONF_JSON_PATCH));
    fail_each(difference("merge patch", base.get(), other.get(), K_CONF_MERGE_PATCH));
    fail_each(application("application of a patch", base.get(), other.get(), K_CONF_JSON_PATCH));
    fail_each(application("application of a merge patch", base.get(), other.get(), K_CONF_MERGE_PATCH));
    print_as("differences and their application");
}

TEST_F(AllocationFailures, InTheErrorRecord) {
    const auto report_often = [](json_t*, k_err_t* err) -> json_t* {
        for (int i = 0; i < 100; ++i) k_err_set(err, "function", i, "message %d of %s", i, "a hundred");
        for (size_t i = 0; i < k_err_count(err); ++i) {
            EXPECT_STREQ("function", k_err_function(err, i));
            EXPECT_NE(nullptr, k_err_message(err, i));
        }
        k_err_clear(err);
        k_err_set(err, nullptr, 0, "after that");
        return nullptr;
    };
    fail_each({"error record", Tree{json_object()}, report_often});
    print_as("the error record");
}

TEST_F(AllocationFailures, InTheUtilities) {
    fail_each({"self-check", Tree{json_object()}, [](json_t*, k_err_t*) -> json_t* {
                   k_cnvrt_check_valid_hashes();
                   return nullptr;
               }});
    fail_each({"sorted names", new_example(), [](json_t* source, k_err_t*) -> json_t* {
                   int count = 0;
                   char** names = getSortedKeys(json_object_get(source, "Device"), &count);
                   EXPECT_EQ(names == nullptr, count < 0);
                   freeArrayOfString(names, count);
                   return nullptr;
               }});
    print_as("the utilities");
}

}  // namespace

int main(int argc, char** argv) {
    lead_jansson_here();
    testing::InitGoogleTest(&argc, argv);
    const int status = RUN_ALL_TESTS();
    print_row("all", of_all);
    return status;
}
