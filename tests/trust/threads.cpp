// Calls on distinct trees may run in parallel: eight threads convert trees of their own, and each gets what one thread
// alone gets. The thread sanitizer watches when this is built with it.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>

#include "conversions.h"
#include "examples.h"
#include "k_conf.h"
#include "sampling.h"
#include "silence.h"

namespace {

constexpr size_t kThreads = 8;

// What every conversion of the examples gives, messages included.
std::vector<std::string> results_of(const std::vector<Conversion>& conversions) {
    std::vector<std::string> results;
    for (const Conversion& conversion : conversions) {
        k_err_t* err = k_err_new();
        const Tree result{conversion.run(conversion.source.get(), err)};
        std::string text = text_of(result.get());
        for (size_t i = 0; i < k_err_count(err); ++i) text += std::string{"\n"} + k_err_message(err, i);
        results.push_back(std::move(text));
        k_err_free(err);
    }
    return results;
}

// A difference between two trees of the thread's own, and back.
std::string difference() {
    const Tree base = old_example();
    const Tree other = new_example();
    const Tree patch{k_conf_diff_set2(base.get(), other.get(), 0, K_CONF_JSON_PATCH, nullptr)};
    const Tree applied{k_conf_apply(base.get(), patch.get(), nullptr)};
    return text_of(applied.get());
}

struct Work {
    std::vector<std::string> results;
    std::string difference;
    bool is_steady = true;  // each repetition gave the same
};

void work(Work& done) {
    const auto conversions = conversions_of(old_example().get(), new_example().get());
    done.results = results_of(conversions);
    done.difference = difference();
    for (size_t i = repetitions(20); i > 0; --i)
        done.is_steady = done.is_steady && results_of(conversions) == done.results;
}

std::array<Work, kThreads> work_in_parallel() {
    const Silence silence;
    std::array<Work, kThreads> work_of;
    std::array<std::thread, kThreads> threads;
    for (size_t i = 0; i < kThreads; ++i) threads[i] = std::thread{work, std::ref(work_of[i])};
    for (std::thread& thread : threads) thread.join();
    return work_of;
}

Work work_alone() {
    const Silence silence;
    return {results_of(conversions_of(old_example().get(), new_example().get())), difference(), true};
}

TEST(Threads, ConvertDistinctTreesAsOneAloneDoes) {
    const auto work_of = work_in_parallel();
    const Work alone = work_alone();
    for (const Work& done : work_of) {
        EXPECT_EQ(alone.results, done.results);
        EXPECT_EQ(alone.difference, done.difference);
        EXPECT_TRUE(done.is_steady);
    }
}

}  // namespace
