#include "named_files.h"

#include <unistd.h>

#include <cstring>
#include <vector>

#include "commands/arguments.h"
#include "disk/named_file.h"

namespace kcnvrt {

namespace {

// A device may be read, and written twice.
void add_output(std::vector<NamedFile>& outputs, const std::string& name, const Command* command) {
    NamedFile output(name, STDOUT_FILENO);
    if (output.is_there() && !output.is_regular()) return;
    for (const NamedFile& other : outputs) {
        if (!output.will_be(other)) continue;
        if (name == other.name()) fail_by_usage("\"" + name + "\" is to be written twice", command);
        fail_by_usage("\"" + name + "\" and \"" + other.name() + "\" are the same file, and both are written", command);
    }
    outputs.push_back(std::move(output));
}

}  // namespace

void check_files(const Options& options, const char* name) {
    const Command* const command = find_command(name);
    std::vector<NamedFile> outputs;
    add_output(outputs, options.output, command);
    for (const auto& file : {options.stream.rejects, options.stream.problems, options.stream.html}) {
        if (file == kStandardStream) fail_by_usage("only the output can go to -", command);
        if (file) add_output(outputs, *file, command);
    }
    for (const std::string& file : options.inputs) {
        const NamedFile input(file, STDIN_FILENO);
        if (!input.is_there()) throw Failure{kUnusableFile, file, "read", std::strerror(input.error())};
        for (const NamedFile& output : outputs)
            if (output.is(input))
                fail_by_usage("\"" + output.name() + "\" is read, so it cannot be written too", command);
    }
}

std::size_t size_of_inputs(const std::vector<std::string>& files) {
    std::size_t total = 0;
    for (const std::string& file : files) {
        const NamedFile input(file, STDIN_FILENO);
        if (!input.is_regular()) return 0;
        const off_t read = file == kStandardStream ? lseek(STDIN_FILENO, 0, SEEK_CUR) : 0;
        total += static_cast<std::size_t>(input.size() > read ? input.size() - read : 0);
    }
    return total;
}

}  // namespace kcnvrt
