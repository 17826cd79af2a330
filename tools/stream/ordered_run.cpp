#include "ordered_run.h"

#include <jansson.h>
#include <malloc.h>

#include "cores.h"
#include "ending.h"
#include "turns.h"
#include "workers.h"

namespace kcnvrt {

namespace {

// The allocator of the C library would learn from the buffers of a large record to keep memory of that size, in pieces.
// Here they are mapped, and given back at once; blocks of ordinary size are kept.
void give_back_large_buffers() {
#ifdef M_MMAP_THRESHOLD
    mallopt(M_MMAP_THRESHOLD, kLargeRecord);
    mallopt(M_TRIM_THRESHOLD, 2 * kLargeRecord);
#endif
}

void convert_parts(const std::function<bool(Outcome&)>& next, Turns& turns) try {
    Outcome outcome;
    while (next(outcome) && turns.hand_in(std::move(outcome))) {
    }
} catch (...) {
    turns.fail();
}

}  // namespace

OrderedRun::OrderedRun(const Options& options, const Subject& subject)
    : jobs_(options.stream.jobs != 0 ? options.stream.jobs : usable_cores()), delivery_(options, subject) {
    end_between_lines();
    give_back_large_buffers();
    json_object_seed(0);  // before there are threads
}

ExitStatus OrderedRun::run(const std::function<bool(Outcome&)>& next) {
    Turns turns([this](const Outcome& outcome) { return delivery_.deliver(outcome); }, [this] { wake_.up(); }, jobs_);
    run_in_threads(jobs_, [&] { convert_parts(next, turns); });
    try {
        turns.rethrow();
    } catch (const ClosedPipe&) {
        // Who reads the output has all he wanted.
    }
    return delivery_.finish();
}

}  // namespace kcnvrt
