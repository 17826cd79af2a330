#include "stream.h"

#include "block_converter.h"
#include "named_files.h"
#include "ordered_run.h"
#include "splitter.h"

namespace kcnvrt {

ExitStatus convert_records(const Options& options, OrderedRun& run) {
    Splitter splitter(options.inputs, options.stream.sizes, run.wake(), run.standard_output());
    const BlockConverter converter(options);
    return run.run([&splitter, &converter](Outcome& outcome) {
        Block block;
        if (!splitter.next(block)) return false;
        outcome = converter.convert(block);
        return true;
    });
}

ExitStatus stream(const Options& options) {
    check_files(options, "stream");
    OrderedRun run(options, {.bytes = size_of_inputs(options.inputs), .has_losses = options.losses});
    return convert_records(options, run);
}

}  // namespace kcnvrt
