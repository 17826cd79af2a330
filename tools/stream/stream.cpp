#include "stream.h"

#include "block_converter.h"
#include "named_files.h"
#include "ordered_run.h"
#include "splitter.h"

namespace kcnvrt {

ExitStatus stream(const Options& options) {
    const std::vector<std::string>& files = options.inputs;
    check_files(options, "stream");
    OrderedRun run(options, {.bytes = size_of_inputs(files), .records = 0});
    Splitter splitter(files, options.stream.sizes, run.wake(), run.standard_output());
    const BlockConverter converter(options);
    return run.run([&splitter, &converter](Outcome& outcome) {
        Block block;
        if (!splitter.next(block)) return false;
        outcome = converter.convert(block);
        return true;
    });
}

}  // namespace kcnvrt
