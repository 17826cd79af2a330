// What the user asked for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "disk/input.h"
#include "failure.h"
#include "print/messages.h"
#include "stream/options.h"

namespace kcnvrt {

// Each command reads those that it takes.
struct Options {
    std::string section;
    std::string file = kStandardStream;
    std::optional<std::string> base;
    std::string from;   // of diff and apply
    std::string other;  // where diff arrives, what apply applies
    bool to_new = false;
    bool to_old = false;
    bool dsl_vlan = false;
    bool merge_patch = false;
    bool partial = false;
    bool force = false;
    bool as_is = false;
    bool losses = false;
    bool strict = false;
    bool json = false;
    bool exit_code = false;
    std::optional<std::string> pointer;      // of the member that is explained
    std::optional<std::string> from_result;  // of the place in the result that is explained
    std::string topic;                       // the command that help is asked for
    std::string asked;                       // the section or place to tell of
    std::string layout;                      // of which something is told
    bool closed = false;
    bool all = false;
    bool as_json = false;
    bool as_markdown = false;

    std::string output = kStandardStream;
    bool compact = false;
    std::optional<int> indent;
    ErrorFormat errors = ErrorFormat::kText;
    ColorChoice color = ColorChoice::kAuto;
    bool show_secrets = false;
    StreamOptions stream;
    std::vector<std::string> inputs;  // the files that the result is made of
};

// Carries out the command line.
ExitStatus run_command_line(int argc, char** argv);

}  // namespace kcnvrt
