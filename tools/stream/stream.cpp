#include "stream.h"

#include <jansson.h>

#include "block_converter.h"
#include "cores.h"
#include "delivery.h"
#include "ending.h"
#include "named_files.h"
#include "splitter.h"
#include "turns.h"
#include "wake.h"
#include "workers.h"

namespace kcnvrt {

namespace {

// Block after block. A large one is let go when it is written.
void convert_blocks(Splitter& splitter, const BlockConverter& converter, Turns& turns) try {
    Block block;
    while (splitter.next(block)) {
        const bool goes_on = turns.hand_in(converter.convert(block));
        if (block.large.owns_lock()) block = Block();
        if (!goes_on) break;
    }
} catch (...) {
    turns.fail();
}

}  // namespace

ExitStatus stream(const Options& options) {
    const std::vector<std::string>& files = options.inputs;
    check_files(options, "stream");
    end_between_lines();
    json_object_seed(0);  // before there are threads
    Delivery delivery(options, size_of_inputs(files));
    Wake wake;
    const std::size_t jobs = options.stream.jobs != 0 ? options.stream.jobs : usable_cores();
    Turns turns([&delivery](const Outcome& outcome) { return delivery.deliver(outcome); }, [&wake] { wake.up(); },
                jobs);
    Splitter splitter(files, options.stream.sizes, wake, delivery.standard_output());
    const BlockConverter converter(options);
    run_in_threads(jobs, [&] { convert_blocks(splitter, converter, turns); });
    try {
        turns.rethrow();
    } catch (const ClosedPipe&) {
        // Who reads the output has all he wanted.
    }
    return delivery.finish();
}

}  // namespace kcnvrt
