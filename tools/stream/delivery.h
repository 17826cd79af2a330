// Writing what the parts of the input came to, in their order.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "census/report.h"
#include "commands/command_line.h"
#include "disk/output.h"
#include "line_file.h"
#include "outcome.h"
#include "progress.h"

namespace kcnvrt {

class Delivery {
public:
    // Opens the files that the user named.
    Delivery(const Options& options, const Subject& subject);

    // False when there are more rejects than are allowed: what came behind the last one is not written.
    bool deliver(const Outcome& outcome);

    // Puts a file in its place, unless the run ended early, and says what it was.
    ExitStatus finish();

    // What it was.
    Report report() const;

    // The descriptor of standard output; -1 where that is not written to.
    int standard_output() const;

private:
    std::optional<Outcome::Mark> last_allowed(const Outcome& outcome) const;
    void write(const Outcome& outcome, const Outcome::Mark& end);
    void write_lines(std::string_view lines);

    const Options& options_;
    const Subject subject_;
    std::unique_ptr<Output> replaced_;   // where the output is a file
    std::unique_ptr<LineFile> output_;   // where it is standard output; with --output-dir there is neither
    std::unique_ptr<LineFile> rejects_;  // where they are kept
    std::unique_ptr<LineFile> problems_;
    Progress progress_;
    Tally tally_;
    Census census_;
    bool is_cut_ = false;
};

}  // namespace kcnvrt
