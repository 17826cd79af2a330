#include "commands/command_line.h"

#include <k_cnvrt/version.h>
#include <unistd.h>

#include <cstdio>
#include <new>

#include "commands/arguments.h"
#include "commands/help.h"
#include "disk/output.h"
#include "memory/out_of_memory.h"

namespace kcnvrt {

namespace {

// A person who names no command is shown them all, where a program gets a line.
ExitStatus answer_without_command() {
    if (isatty(STDERR_FILENO) == 0) fail_by_usage("a command is required", nullptr);
    std::fputs(help_page(nullptr).c_str(), stderr);
    return kWrongUsage;
}

ExitStatus read_and_run(int argc, char** argv, Options& options) {
    const Request request = read_arguments(argc, argv, options);
    if (request.question == &kVersion) {
        write_text(kStandardStream, "kcnvrt " K_CNVRT_VERSION "\n");
        return kConverted;
    }
    if (request.question == &kHelp) {
        write_text(kStandardStream, help_page(request.command));
        return kConverted;
    }
    return request.command == nullptr ? answer_without_command() : request.command->run(options);
}

ExitStatus run_and_report(int argc, char** argv, Options& options) {
    try {
        return read_and_run(argc, argv, options);
    } catch (const ClosedPipe&) {
        return kConverted;
    } catch (const Failure& failure) {
        Messages(options.errors, options.color).print(failure.source, failure.function, failure.message);
        return failure.status;
    }
}

}  // namespace

ExitStatus run_command_line(int argc, char** argv) {
    Options options;
    try {
        return run_and_report(argc, argv, options);
    } catch (const std::bad_alloc&) {
        print_out_of_memory(options.errors);
        return kUnusableFile;
    }
}

}  // namespace kcnvrt
