// Converting many files into a folder.
#pragma once

#include <optional>
#include <string>

#include "commands/command_line.h"
#include "commands/result.h"

namespace kcnvrt {

// What a command makes of each file: the output of an operation of the text layer, or a report of it.
struct FileTask {
    const char* command;
    uint32_t operation;
    uint32_t flags = 0;  // besides those that options stand for
    // The report; nothing where there is none. What does not stand in it goes to the messages. Null for a conversion.
    std::optional<std::string> (*report)(k_text_result_t* result, const Source& source, const Options& options,
                                         const Messages& messages) = nullptr;
};

// Whether that is asked for. Throws a Failure where the arguments are many and no folder is named.
bool are_many_files(const Options& options, const char* command);

// Each file, under its own name in the folder.
ExitStatus convert_files(const FileTask& task, const Options& options);

}  // namespace kcnvrt
