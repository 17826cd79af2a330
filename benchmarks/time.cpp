// Times every conversion, and beside it what parsing its source, copying its result and printing its result cost in the
// same run; prints the ratios. What the machine does besides disturbs both sides of a ratio.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "deep_copy.h"
#include "subjects.h"

using namespace kcnvrt;
using namespace kcnvrt::bench;

namespace {

constexpr int kRepetitions = 5;
constexpr double kSecondsOfEach = 0.03;

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

Text dumped(json_t* value) {
    return Text{json_dumps(value, JSON_COMPACT)};
}

// The making of the value is timed, its release is not.
template <class Make>
void time_making(benchmark::State& state, Make make) {
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const auto start = Clock::now();
        const auto made = make();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
    }
}

template <class Make>
void add(const std::string& label, const char* step, Make make) {
    const std::string name = label + "/" + step;
    benchmark::RegisterBenchmark(name.c_str(), [make](benchmark::State& state) { time_making(state, make); })
        ->UseManualTime()
        ->MinTime(kSecondsOfEach)
        ->Repetitions(kRepetitions);
}

void add_steps(const Subject& subject) {
    add(subject.label, "convert", [&subject] { return subject.convert(); });
    add(subject.label, "loads",
        [text = std::shared_ptr<char>{dumped(subject.source)}] { return Json{json_loads(text.get(), 0, nullptr)}; });
    add(subject.label, "copy",
        [result = std::shared_ptr<json_t>{subject.convert()}] { return deep_copy(result.get()); });
    add(subject.label, "dumps", [result = std::shared_ptr<json_t>{subject.convert()}] { return dumped(result.get()); });
}

// Keeps the best repetition of each step.
class BestTimes : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
            const auto [best, is_new] = best_.try_emplace(run.run_name.function_name, seconds);
            if (!is_new) best->second = std::min(best->second, seconds);
        }
    }

    double operator()(const std::string& label, const char* step) const { return best_.at(label + "/" + step); }

private:
    std::map<std::string, double> best_;
};

void print(const Subject& subject, const BestTimes& best) {
    const double convert = best(subject.label, "convert");
    std::printf("%-44s %10.1f %8.2f %8.2f %8.2f\n", subject.label.c_str(), convert * 1e6,
                convert / best(subject.label, "loads"), convert / best(subject.label, "copy"),
                convert / best(subject.label, "dumps"));
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const Subjects subjects{static_cast<unsigned>(argc > 1 ? std::atoi(argv[1]) : 100)};
    for (const Subject& subject : subjects) add_steps(subject);
    BestTimes best;
    benchmark::RunSpecifiedBenchmarks(&best);

    std::printf("%-44s %10s %8s %8s %8s\n", "conversion", "us", "/loads", "/copy", "/dumps");
    for (const Subject& subject : subjects) print(subject, best);
}
