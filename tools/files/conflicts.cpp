#include "conflicts.h"

#include "commands/arguments.h"
#include "disk/named_file.h"

namespace kcnvrt {

namespace {

std::vector<NamedFile> files_besides(const Options& options) {
    std::vector<NamedFile> besides;
    for (const auto& file : {options.stream.rejects, options.stream.problems})
        if (file) besides.emplace_back(*file);
    return besides;
}

}  // namespace

void refuse_conflicts(const FileList& files, const Options& options, const char* command) {
    const Command* const page = find_command(command);
    const std::vector<NamedFile> besides = files_besides(options);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const FilePair pair = files[i];
        const NamedFile input(pair.input);
        const NamedFile output(pair.output);
        if (input.is(output)) fail_by_usage(input.name() + " would be replaced by what it becomes", page);
        for (const NamedFile& file : besides) {
            if (file.is(input)) fail_by_usage("\"" + file.name() + "\" is read, so it cannot be written too", page);
            if (file.will_be(output)) fail_by_usage("\"" + file.name() + "\" is to be written twice", page);
        }
    }
}

}  // namespace kcnvrt
