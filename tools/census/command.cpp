#include "command.h"

#include "disk/output.h"
#include "report.h"
#include "stream/named_files.h"
#include "stream/stream.h"

namespace kcnvrt {

// A stream of which only the losses are kept. That devices are rejected is an answer, and no failure.
ExitStatus census(const Options& asked) {
    Options options = asked;
    options.losses = true;
    options.stream.is_census = true;
    check_files(options, "census");
    OrderedRun run(options, {.bytes = size_of_inputs(options.inputs), .has_losses = true});
    convert_records(options, run);
    const Report report = run.report();
    if (options.stream.html) write_text(*options.stream.html, page_of(report));
    write_text(options.output, options.stream.json ? json_of(report) : table_of(report));
    return kConverted;
}

}  // namespace kcnvrt
