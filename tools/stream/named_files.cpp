#include "named_files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "commands/arguments.h"

namespace kcnvrt {

namespace {

bool find_status(const std::string& file, int standard_stream, struct stat& status) {
    return (file == kStandardStream ? fstat(standard_stream, &status) : stat(file.c_str(), &status)) == 0;
}

bool are_same(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// A device may be read and written.
struct RegularFile {
    std::string name;
    struct stat status;
};

void add_output(std::vector<RegularFile>& outputs, const std::string& file, const Command* command) {
    RegularFile output = {file, {}};
    if (!find_status(file, STDOUT_FILENO, output.status) || !S_ISREG(output.status.st_mode)) return;
    for (const RegularFile& other : outputs)
        if (are_same(output.status, other.status))
            fail_by_usage("\"" + file + "\" and \"" + other.name + "\" are the same file, and both are written",
                          command);
    outputs.push_back(std::move(output));
}

// Of two that do not exist yet only the names can be compared.
void check_names(const std::vector<std::string>& outputs, const Command* command) {
    for (std::size_t i = 0; i < outputs.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (outputs[i] == outputs[j]) fail_by_usage("\"" + outputs[i] + "\" is to be written twice", command);
}

}  // namespace

void check_files(const Options& options, const char* name) {
    const Command* const command = find_command(name);
    std::vector<std::string> named = {options.output};
    for (const auto& file : {options.stream.rejects, options.stream.problems, options.stream.html}) {
        if (file == kStandardStream) fail_by_usage("only the output can go to -", command);
        if (file) named.push_back(*file);
    }
    check_names(named, command);
    std::vector<RegularFile> outputs;
    for (const std::string& file : named) add_output(outputs, file, command);
    for (const std::string& input : options.inputs) {
        struct stat status;
        if (!find_status(input, STDIN_FILENO, status))
            throw Failure{kUnusableFile, input, "read", std::strerror(errno)};
        for (const RegularFile& output : outputs)
            if (are_same(status, output.status))
                fail_by_usage("\"" + output.name + "\" is read, so it cannot be written too", command);
    }
}

std::size_t size_of_inputs(const std::vector<std::string>& files) {
    std::size_t total = 0;
    for (const std::string& file : files) {
        struct stat status;
        if (!find_status(file, STDIN_FILENO, status) || !S_ISREG(status.st_mode)) return 0;
        const off_t read = file == kStandardStream ? lseek(STDIN_FILENO, 0, SEEK_CUR) : 0;
        total += static_cast<std::size_t>(status.st_size > read ? status.st_size - read : 0);
    }
    return total;
}

}  // namespace kcnvrt
