// The commands that tell what a conversion would lose, and make none.
#include <unistd.h>

#include "commands/answer.h"
#include "commands/commands.h"
#include "commands/loss_lines.h"
#include "disk/output.h"
#include "files/many_files.h"

namespace kcnvrt {

namespace {

bool report_has_colors(const Options& options) {
    const bool is_standard_output = options.output == kStandardStream && options.stream.output_dir.empty();
    return is_standard_output && has_colors(STDOUT_FILENO, options.color);
}

void append_problems(std::string& lines, const k_text_result_t* result, const Source& source, const Options& options) {
    k_text_problem_t problem;
    problem.size = sizeof problem;
    const ErrorFormat format = options.json ? ErrorFormat::kJson : ErrorFormat::kText;
    for (std::size_t i = 0; k_text_problem(result, i, &problem) == 0; ++i)
        append_message(lines, message_of(problem, source, source), format, report_has_colors(options));
}

void append_told_losses(std::string& lines, const k_text_result_t* result, const Source& source,
                        const Options& options) {
    if (options.json)
        append_json_losses(lines, result, source.file);
    else
        append_losses(lines, result, source.file, report_has_colors(options));
}

std::optional<std::string> report_of_losses(k_text_result_t* result, const Source& source, const Options& options,
                                            const Messages& messages) {
    messages.print(result, source, source);
    if (exit_status_of(result) != kConverted) return std::nullopt;
    std::string lines;
    append_told_losses(lines, result, source, options);
    return lines;
}

std::optional<std::string> report_of_check(k_text_result_t* result, const Source& source, const Options& options,
                                           const Messages& messages) {
    const ExitStatus status = exit_status_of(result);
    if (status != kConverted && status != kRejected) {
        messages.print(result, source, source);
        return std::nullopt;
    }
    std::string lines;
    append_problems(lines, result, source, options);
    append_told_losses(lines, result, source, options);
    return lines;
}

// What is told of a file says as much as the file.
void write_lines(const std::string& lines, const Options& options) {
    Output output(options.output, options.inputs);
    output.put(lines);
    output.finish();
}

// Of one file, or of many.
ExitStatus tell(const FileTask& task, const Options& options) {
    if (are_many_files(options, task.command)) return convert_files(task, options);
    const Answer answer = ask({task.operation, nullptr, &options.file, nullptr, task.flags}, options);
    const Messages messages(options.errors, options.color);
    const std::optional<std::string> lines = task.report(answer.result.get(), answer.text, options, messages);
    if (!lines) return exit_status_of(answer.result.get());
    write_lines(*lines, options);
    return options.exit_code && !lines->empty() ? kDifferent : kConverted;
}

}  // namespace

ExitStatus losses(const Options& options) {
    return tell({"losses", K_TEXT_LOSSES, towards(options), report_of_losses}, options);
}

ExitStatus check(const Options& asked) {
    Options options = asked;
    options.exit_code = true;
    return tell({"check", K_TEXT_CHECK, towards(options), report_of_check}, options);
}

}  // namespace kcnvrt
