#include "memory/out_of_memory.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <exception>

#include "disk/passing_file.h"
#include "failure.h"

namespace kcnvrt {

namespace {

constexpr std::string_view kText = "kcnvrt: error: out of memory [memory]\n";
constexpr std::string_view kJson =
    R"({"file": "kcnvrt", "line": null, "column": null, "pointer": null, "severity": "error", "function": "memory", )"
    R"("message": "out of memory"})"
    "\n";

[[noreturn]] void end() {
    if (std::current_exception() != nullptr) std::abort();  // which nobody caught: a mistake of ours
    PassingFile::remove_all();
    print_out_of_memory(ErrorFormat::kText);
    _exit(kUnusableFile);
}

}  // namespace

void print_out_of_memory(ErrorFormat format) {
    const std::string_view line = format == ErrorFormat::kJson ? kJson : kText;
    while (write(STDERR_FILENO, line.data(), line.size()) < 0 && errno == EINTR) {
    }
}

void end_well_without_exceptions() {
    std::set_terminate(end);
}

}  // namespace kcnvrt
