#include "command_line.h"

#include <k_cnvrt/version.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <new>
#include <sstream>
#include <string_view>

#include "commands.h"
#include "output.h"

namespace kcnvrt {

namespace {

constexpr int kDeepestIndent = 31;  // Jansson's

CLI::Option* add_file(CLI::App& command, const char* name, std::string& file, const char* purpose) {
    return command.add_option(name, file, purpose)->type_name("");
}

void add_errors(CLI::App& command, Options& options) {
    const auto choose = [&options](const std::string& format) {
        options.errors = format == "json" ? ErrorFormat::kJson : ErrorFormat::kText;
    };
    command
        .add_option_function<std::string>("--errors", choose, "Messages as lines of text (default) or as JSON objects")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("text|json")
        ->option_text("text|json");
}

void add_output(CLI::App& command, Options& options) {
    command.add_option("-o,--output", options.output, "Write to OUT, which a run that fails leaves alone")
        ->type_name("OUT");
}

void add_layout(CLI::App& command, Options& options) {
    auto* compact = command.add_flag("--compact", options.compact, "Print no white space");
    command.add_option("--indent", options.indent, "Indent by N blanks (4); 0 is one line with blanks")
        ->check(CLI::Range(0, kDeepestIndent))
        ->type_name("N")
        ->option_text("N")
        ->excludes(compact);
}

void add_result(CLI::App& command, Options& options) {
    add_output(command, options);
    add_layout(command, options);
}

void add_dsl_vlan(CLI::App& command, Options& options) {
    command.add_flag("--dsl-vlan", options.dsl_vlan, "The device ties its VLANs to DSL services");
}

CLI::Option* add_base(CLI::App& command, Options& options) {
    auto* base =
        command.add_option("--base", options.base, "Print what has to change in BASE (the new layout) instead")
            ->type_name("BASE");
    command
        .add_flag("--merge-patch", options.merge_patch,
                  "Print the change as a JSON Merge Patch, which cannot say null, not a JSON Patch")
        ->needs(base);
    return base;
}

void declare_to_new(CLI::App& command, Options& options) {
    add_file(command, "FILE", options.file, "The old configuration; - (default) is standard input");
    add_base(command, options);
    add_dsl_vlan(command, options);
    add_result(command, options);
}

void declare_to_old(CLI::App& command, Options& options) {
    add_file(command, "FILE", options.file, "The new configuration; - (default) is standard input");
    add_dsl_vlan(command, options);
    add_result(command, options);
}

void declare_section(CLI::App& command, Options& options) {
    command.add_option("NAME", options.section, "The section's name in the layout that it is converted to")
        ->type_name("")
        ->required();
    add_file(command, "FILE", options.file, "The section in the other layout; - (default) is standard input");
    auto* direction = command.add_option_group("Direction");
    direction->add_flag("--to-new", options.to_new, "Convert to the new layout");
    auto* to_old = direction->add_flag("--to-old", options.to_old, "Convert to the old layout");
    direction->require_option(1);
    add_base(command, options)->excludes(to_old);
    add_result(command, options);
}

void declare_diff(CLI::App& command, Options& options) {
    add_file(command, "BASE", options.from, "The JSON to start from; - is standard input")->required();
    add_file(command, "OTHER", options.other, "The JSON to arrive at; - is standard input")->required();
    command.add_flag("--merge-patch", options.merge_patch,
                     "A JSON Merge Patch, which cannot say null, not a JSON Patch");
    add_result(command, options);
}

void declare_apply(CLI::App& command, Options& options) {
    add_file(command, "BASE", options.from, "The JSON to start from; - is standard input")->required();
    add_file(command, "DIFFERENCE", options.other,
             "A JSON Patch (array) or JSON Merge Patch (object); - is standard input")
        ->required();
    add_result(command, options);
}

void declare_nothing(CLI::App&, Options&) {}

struct Command {
    const char* name;
    const char* purpose;
    const char* notes;  // at the foot of the help page
    void (*declare)(CLI::App& command, Options& options);
    ExitStatus (*run)(const Options& options);
};

// clang-format off
constexpr Command kCommands[] = {
    {"to-new", "Convert a whole configuration to the new layout",
     "With --base the difference is printed whatever failed on the way; the messages tell, the exit status is 0.\n\n"
     "Example: kcnvrt to-new gateway.old.json -o gateway.new.json",
     declare_to_new, to_new},
    {"to-old", "Convert a whole configuration to the old layout",
     "Example: kcnvrt to-old --compact < gateway.new.json > gateway.old.json",
     declare_to_old, to_old},
    {"section", "Convert one section of a configuration",
     "kcnvrt sections lists the names. With --base the difference is printed whatever failed on the way; the messages\n"
     "tell, the exit status is 0.\n\n"
     "Example: kcnvrt section wan_pvid --to-old wan_pvid.new.json",
     declare_section, section},
    {"sections", "List the sections that can be converted alone",
     "One a line: old (for --to-old) or new (for --to-new), a tab, the name.\n\n"
     "Example: kcnvrt sections | grep ^old",
     add_output, sections},
    {"diff", "Print what has to change in BASE to make it equal to OTHER",
     "Example: kcnvrt diff gateway.new.json candidate.new.json -o change.json",
     declare_diff, diff},
    {"apply", "Print BASE with a difference applied",
     "Example: kcnvrt apply gateway.new.json change.json -o candidate.new.json",
     declare_apply, apply},
    {"self-check", "Check the library's section tables",
     "Silent with exit status 0 when they are sound; otherwise a message and 1.\n\n"
     "Example: kcnvrt self-check && echo sound",
     declare_nothing, self_check},
};
// clang-format on

constexpr const char* kNotes =
    "Messages go to standard error, one a line: FILE:LINE:COLUMN: severity: POINTER: message [function]. Standard\n"
    "input is shown as -. Nothing is withheld for a warning.\n"
    "A member given twice in one object is refused, since one of its values would be lost in silence; so is a NUL\n"
    "inside a text (except by diff and apply, which carry it).\n\n"
    "Exit status: 0 converted, also when the reader of the result went away; 1 the document was rejected;\n"
    "2 wrong usage; 3 a file could not be read, parsed or written.\n\n"
    "Example: kcnvrt to-new gateway.old.json\n"
    "         kcnvrt COMMAND --help shows one for each command";

void declare(CLI::App& app, Options& options) {
    app.set_version_flag("--version", "kcnvrt " K_CNVRT_VERSION, "Print the version");
    app.require_subcommand(0, 1);
    app.footer(kNotes);
    add_result(app, options);
    add_errors(app, options);
    for (const Command& command : kCommands) {
        CLI::App& subcommand = *app.add_subcommand(command.name, command.purpose);
        subcommand.footer(command.notes);
        command.declare(subcommand, options);
        add_errors(subcommand, options);
    }
}

const Command& chosen_command(const CLI::App& app) {
    const std::string name = app.get_subcommands().front()->get_name();
    return *std::find_if(std::begin(kCommands), std::end(kCommands) - 1,
                         [&name](const Command& command) { return name == command.name; });
}

[[noreturn]] void fail_by_usage(const std::string& message) {
    throw Failure{kWrongUsage, "kcnvrt", "usage", message + " (kcnvrt --help tells more)"};
}

// Parsing ends early for a question, which gets its help page or version, and for wrong usage.
ExitStatus answer(const CLI::App& app, const CLI::ParseError& question) {
    if (question.get_exit_code() != 0) fail_by_usage(question.what());
    std::ostringstream page;
    app.exit(question, page, page);
    write_text(kStandardStream, page.str());
    return kConverted;
}

// "--output=", as a script's unset variable leaves it.
bool is_option_without_value(std::string_view argument) {
    return argument.starts_with("--") && argument.find('=') == argument.size() - 1;
}

// An empty argument or value names no file, section or number. The parser would take an empty argument, also behind "--",
// for the name of the nameless group of directions, and never come back when an unknown option follows; for an empty value
// it would take the next argument, and a result would be written over the source.
void refuse_empty_arguments(int argc, char** argv) {
    bool are_options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.empty()) fail_by_usage("argument " + std::to_string(i) + " is empty");
        if (argument == "--") are_options = false;
        if (are_options && is_option_without_value(argument)) fail_by_usage(std::string(argument) + " has no value");
    }
}

// Options may stand before the command, where the parser does not know which command they are for.
void refuse_options_of_other_commands(const CLI::App& app) {
    const CLI::App& command = *app.get_subcommands().front();
    for (const CLI::Option* option : app.get_options())
        if (option->count() != 0 && command.get_option_no_throw(option->get_name()) == nullptr)
            fail_by_usage(option->get_name() + " is no option of " + command.get_name());
}

ExitStatus parse_and_run(CLI::App& app, const Options& options, int argc, char** argv) {
    refuse_empty_arguments(argc, argv);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& question) {
        return answer(app, question);
    }
    if (app.get_subcommands().empty()) fail_by_usage("a command is required");
    refuse_options_of_other_commands(app);
    // One may stand before the command and the other behind it.
    if (options.compact && options.indent) fail_by_usage("--indent excludes --compact");
    return chosen_command(app).run(options);
}

}  // namespace

std::vector<std::string> Options::inputs() const {
    if (!from.empty()) return {from, other};
    if (base) return {file, *base};
    return {file};
}

ExitStatus run_command_line(int argc, char** argv) {
    Options options;
    CLI::App app("Converts a gateway's configuration between its two JSON layouts.", "kcnvrt");
    declare(app, options);
    try {
        return parse_and_run(app, options, argc, argv);
    } catch (const ClosedPipe&) {
        return kConverted;
    } catch (const Failure& failure) {
        Messages(options.errors).print(failure.source, failure.function, failure.message);
        return failure.status;
    } catch (const std::bad_alloc&) {
        Messages(options.errors).print("kcnvrt", "memory", "out of memory");
        return kUnusableFile;
    }
}

}  // namespace kcnvrt
