// Asking the text layer about files, and telling what it has to say.
#pragma once

#include "commands/command_line.h"
#include "commands/result.h"

namespace kcnvrt {

// What a command asks, and of which files.
struct Question {
    uint32_t operation;
    const char* section;
    const std::string* text;
    const std::string* other;  // null where there is none
    uint32_t flags = 0;        // besides those that options stand for
    const char* pointer = nullptr;
};

// What comes of it, and the texts that its problems are about.
struct Answer {
    Source text;
    Source other;
    Result result;
};

// A request about the text, with all that the user wants of it.
k_text_request_t request_of(uint32_t operation, std::string_view text, const Options& options);

// The flag of the direction that the user names, if any.
uint32_t towards(const Options& options);

Answer ask(const Question& question, const Options& options);

ExitStatus exit_status_of(const k_text_result_t* result);

// Prints the problems, and the losses as warnings, under the names of the files, and writes the output.
ExitStatus deliver(const Answer& answer, const Options& options);

}  // namespace kcnvrt
