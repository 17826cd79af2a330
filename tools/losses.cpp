// The commands that tell what a conversion would lose, and make none.
#include <unistd.h>

#include "answer.h"
#include "commands.h"
#include "loss_lines.h"
#include "output.h"

namespace kcnvrt {

namespace {

Answer ask_about(uint32_t operation, const Options& options) {
    return ask({operation, nullptr, &options.file, nullptr, towards(options)}, options);
}

bool output_has_colors(const Options& options) {
    return options.output == kStandardStream && has_colors(STDOUT_FILENO, options.color);
}

void append_problems(std::string& lines, const Answer& answer, const Options& options) {
    k_text_problem_t problem;
    problem.size = sizeof problem;
    const ErrorFormat format = options.json ? ErrorFormat::kJson : ErrorFormat::kText;
    for (std::size_t i = 0; k_text_problem(answer.result.get(), i, &problem) == 0; ++i)
        append_message(lines, message_of(problem, answer.text, answer.other), format, output_has_colors(options));
}

void append_losses_of(const Answer& answer, const Options& options, std::string& lines) {
    if (options.json)
        append_json_losses(lines, answer.result.get(), answer.text.file);
    else
        append_losses(lines, answer.result.get(), answer.text.file, output_has_colors(options));
}

// What is told of a file says as much as the file.
void write_lines(const std::string& lines, const Options& options) {
    Output output(options.output, options.inputs);
    output.put(lines);
    output.finish();
}

}  // namespace

ExitStatus losses(const Options& options) {
    const Answer answer = ask_about(K_TEXT_LOSSES, options);
    Messages(options.errors, options.color).print(answer.result.get(), answer.text, answer.other);
    const ExitStatus status = exit_status_of(answer.result.get());
    if (status != kConverted) return status;
    std::string lines;
    append_losses_of(answer, options, lines);
    write_lines(lines, options);
    return options.exit_code && !lines.empty() ? kDifferent : kConverted;
}

ExitStatus check(const Options& options) {
    const Answer answer = ask_about(K_TEXT_CHECK, options);
    const ExitStatus status = exit_status_of(answer.result.get());
    if (status != kConverted && status != kRejected) {
        Messages(options.errors, options.color).print(answer.result.get(), answer.text, answer.other);
        return status;
    }
    std::string lines;
    append_problems(lines, answer, options);
    append_losses_of(answer, options, lines);
    write_lines(lines, options);
    return lines.empty() ? kConverted : kRejected;
}

}  // namespace kcnvrt
