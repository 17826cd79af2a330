// Runs every conversion once for callgrind, which counts the instructions of each step and writes them out under the
// label of the step. Prints, for each conversion, its label, the bytes of its source and the values of its result.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>

#include "deep_copy.h"
#include "subjects.h"
#include "unshared_nodes.h"

using namespace kcnvrt;
using namespace kcnvrt::bench;

namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

Text dumped(json_t* value) {
    return Text{json_dumps(value, JSON_COMPACT)};
}

// One step, counted. What it makes is given back only at the end: memory that steps before it left behind would be
// found by the allocator of one step and not of another.
template <class Step>
auto counted(const Subject& subject, const char* step_name, Step step) {
    const std::string label = std::string{step_name} + " " + subject.label;
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    auto made = step();
    CALLGRIND_DUMP_STATS_AT(label.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
    return made;
}

struct Made {
    Text source;
    Json result;
    Json parsed;
    Json remade;
    Json copy;
    Text dumped;
};

Made count_steps(const Subject& subject) {
    Made made;
    made.source = dumped(subject.source);
    made.result = counted(subject, "convert", [&] { return subject.convert(); });
    made.parsed = counted(subject, "loads", [&] { return Json{json_loads(made.source.get(), 0, nullptr)}; });
    made.remade = counted(subject, "least", Remaker{made.result.get(), subject.source});
    made.copy = counted(subject, "copy", [&] { return deep_copy(made.result.get()); });
    made.dumped = counted(subject, "dumps", [&] { return dumped(made.result.get()); });
    std::printf("%zu %zu %s\n", std::strlen(made.source.get()), count_nodes(made.result.get()), subject.label.c_str());
    return made;
}

std::vector<Made> count_each(const Subjects& subjects) {
    std::vector<Made> made;
    for (const Subject& subject : subjects) made.push_back(count_steps(subject));
    return made;
}

// So that the loader has its work on first calls behind it.
void call_everything_once() {
    const Subjects subjects{10};
    for (const Subject& subject : subjects) deep_copy(subject.convert().get());
}

}  // namespace

int main(int argc, char** argv) {
    call_everything_once();
    count_each(Subjects{static_cast<unsigned>(argc == 2 ? std::atoi(argv[1]) : 100)});
}
