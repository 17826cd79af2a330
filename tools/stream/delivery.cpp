#include "delivery.h"

#include <unistd.h>

#include "disk/input.h"
#include "print/numbers.h"

namespace kcnvrt {

namespace {

bool is_progress_shown(const StreamOptions& options) {
    return options.progress || stderr_is_terminal();
}

// A stream whose losses are counted has nothing else that would tell of them.
SummaryFormat format_of(const Options& options) {
    if (options.stream.is_census) return SummaryFormat::kNone;
    const bool is_told_alone = options.losses && options.stream.output_dir.empty();
    const bool is_shown = is_progress_shown(options.stream) || is_told_alone;
    return options.stream.summary.value_or(is_shown ? SummaryFormat::kText : SummaryFormat::kNone);
}

std::unique_ptr<LineFile> open_file(const std::optional<std::string>& file, const Options& options) {
    return file ? std::make_unique<LineFile>(*file, options.inputs) : nullptr;
}

std::string_view until(const std::string& lines, std::size_t end) {
    return std::string_view(lines).substr(0, end);
}

}  // namespace

Delivery::Delivery(const Options& options, const Subject& subject)
    : options_(options),
      subject_(subject),
      rejects_(open_file(options.stream.rejects, options)),
      problems_(open_file(options.stream.problems, options)),
      progress_(is_progress_shown(options.stream), subject) {
    const bool is_stream = options.stream.output_dir.empty() && !options.stream.is_census;
    const bool is_standard = options.output == kStandardStream;
    if (is_stream && is_standard) output_ = std::make_unique<LineFile>(STDOUT_FILENO, kStandardStream);
    if (is_stream && !is_standard) replaced_ = std::make_unique<Output>(options.output, options.inputs);
    if (!problems_ && !options.stream.is_census) problems_ = std::make_unique<LineFile>(STDERR_FILENO, kStandardStream);
}

int Delivery::standard_output() const {
    return output_ ? STDOUT_FILENO : -1;
}

bool Delivery::deliver(const Outcome& outcome) {
    const std::optional<Outcome::Mark> last = last_allowed(outcome);
    is_cut_ = last.has_value();
    write(outcome, last.value_or(outcome.end()));
    if (!is_cut_ && outcome.failure) std::rethrow_exception(outcome.failure);
    progress_.show(tally_);
    return !is_cut_;
}

// Where the run ends early: behind the first reject that is not allowed.
std::optional<Outcome::Mark> Delivery::last_allowed(const Outcome& outcome) const {
    if (!options_.stream.max_rejects) return std::nullopt;
    const std::size_t left = *options_.stream.max_rejects - tally_.rejected;
    if (outcome.behind_rejects.size() <= left) return std::nullopt;
    return outcome.behind_rejects[left];
}

void Delivery::write(const Outcome& outcome, const Outcome::Mark& end) {
    write_lines(until(outcome.lines, end.lines));
    if (rejects_) rejects_->write(until(outcome.rejects, end.rejects));
    if (end.problems != 0) progress_.clear();
    if (problems_) problems_->write(until(outcome.problems, end.problems));
    for (std::size_t i = 0; i < end.findings; ++i) census_.add(outcome.findings[i]);
    tally_ += end.tally;
}

void Delivery::write_lines(std::string_view lines) {
    if (output_) output_->write(lines);
    if (replaced_ && !replaced_->put(lines)) replaced_->finish();  // which throws
}

Report Delivery::report() const {
    return {tally_, census_.troubles(), with_digits(progress_.seconds(), 3)};
}

ExitStatus Delivery::finish() {
    if (replaced_ && !is_cut_) replaced_->finish();
    progress_.clear();
    if (is_cut_)
        Messages(options_.errors, options_.color)
            .print(
                "kcnvrt", "stream",
                std::string("more ") + subject_.many + " were rejected than --max-rejects allows: the run ends here");
    LineFile(STDERR_FILENO, kStandardStream).write(summary_of(report(), format_of(options_), subject_));
    const bool is_accepted = tally_.rejected == 0 || (options_.stream.accept_rejects && !is_cut_);
    return is_accepted ? kConverted : kRejected;
}

}  // namespace kcnvrt
