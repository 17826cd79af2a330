#include "commands/command_table.h"

#include <k_cnvrt_text.h>

#include <algorithm>
#include <charconv>
#include <cstring>

#include "census/command.h"
#include "commands/commands.h"
#include "commands/help.h"
#include "layouts/layout_commands.h"
#include "stream/stream.h"
#include "stream/values.h"

namespace kcnvrt {

namespace {

template <auto Member>
const char* flag(Options& options, const char*) {
    options.*Member = true;
    return nullptr;
}

template <auto Member>
const char* text(Options& options, const char* value) {
    options.*Member = value;
    return nullptr;
}

const char* indent(Options& options, const char* value) {
    static_assert(K_TEXT_DEEPEST_INDENT == 31, "the message says so");
    int blanks = 0;
    const char* const end = value + std::strlen(value);
    const auto [stop, error] = std::from_chars(value, end, blanks);
    const bool fits = error == std::errc() && stop == end && blanks >= 0 && blanks <= K_TEXT_DEEPEST_INDENT;
    if (!fits) return "a number from 0 to 31";
    options.indent = blanks;
    return nullptr;
}

const char* errors(Options& options, const char* value) {
    const std::string_view format(value);
    if (format != "text" && format != "json") return "text or json";
    options.errors = format == "json" ? ErrorFormat::kJson : ErrorFormat::kText;
    return nullptr;
}

const char* color(Options& options, const char* value) {
    const std::string_view when(value);
    if (when != "auto" && when != "always" && when != "never") return "auto, always or never";
    options.color = when == "always"  ? ColorChoice::kAlways
                    : when == "never" ? ColorChoice::kNever
                                      : ColorChoice::kAuto;
    return nullptr;
}

// An option that only many files take.
constexpr Option of_many(Option option, const Option& output_dir, const char* purpose) {
    option.purpose = purpose;
    option.needs = &output_dir;
    return option;
}

// clang-format off

//                          name      letter  value      names              stored by
constexpr Option kOutput   {"output",  'o', "OUT",       Names::kOutput,  text<&Options::output>,
                            "Write to OUT, which a run that fails leaves alone"};
constexpr Option kCompact  {"compact",  0,  nullptr,     Names::kNothing, flag<&Options::compact>,
                            "Print no white space"};
constexpr Option kIndent   {"indent",   0,  "N",         Names::kNumber,  indent,
                            "Indent by N blanks, at most 31 (4); 0 is one line", nullptr, &kCompact};
constexpr Option kErrors   {"errors",   0,  "text|json", Names::kWord,    errors,
                            "Messages as lines of text (default) or as JSON objects"};
constexpr Option kColor    {"color",    0,  "auto|always|never", Names::kWord, color,
                            "Colours in messages; auto (default) where the terminal has them"};
constexpr Option kShowSecrets{"show-secrets", 0, nullptr, Names::kNothing, flag<&Options::show_secrets>,
                            "Do not mask passwords and keys in messages"};
constexpr Option kDslVlan  {"dsl-vlan", 0,  nullptr,     Names::kNothing, flag<&Options::dsl_vlan>,
                            "The device ties its VLANs to DSL services"};
constexpr Option kToNew    {"to-new",   0,  nullptr,     Names::kNothing, flag<&Options::to_new>,
                            "Convert to the new layout"};
constexpr Option kToOld    {"to-old",   0,  nullptr,     Names::kNothing, flag<&Options::to_old>,
                            "Convert to the old layout"};
constexpr Option kBase     {"base",     0,  "BASE",      Names::kInput,   text<&Options::base>,
                            "Print what has to change in BASE (the new layout) instead", nullptr, &kToOld};
constexpr Option kChangeAsMergePatch{"merge-patch", 0, nullptr, Names::kNothing, flag<&Options::merge_patch>,
                            "Print the change as a JSON Merge Patch, which cannot say null, not as a JSON Patch",
                            &kBase};
constexpr Option kMergePatch{"merge-patch", 0, nullptr,  Names::kNothing, flag<&Options::merge_patch>,
                            "Print it as a JSON Merge Patch, which cannot say null, not as a JSON Patch"};
constexpr Option kPartial  {"partial",  0,  nullptr,     Names::kNothing, flag<&Options::partial>,
                            "Write what can be converted of a rejected document; exit with 1", nullptr, &kBase};
constexpr Option kLosses   {"losses",   0,  nullptr,     Names::kNothing, flag<&Options::losses>,
                            "Warn of what the other layout will not hold"};
constexpr Option kStrict   {"strict",   0,  nullptr,     Names::kNothing, flag<&Options::strict>,
                            "Reject a configuration with any warning or loss", nullptr, &kPartial};
constexpr Option kFromOld  {"to-new",   0,  nullptr,     Names::kNothing, flag<&Options::to_new>,
                            "Ask about the new layout, whatever the configuration looks like"};
constexpr Option kFromNew  {"to-old",   0,  nullptr,     Names::kNothing, flag<&Options::to_old>,
                            "Ask about the old layout", nullptr, &kFromOld};
constexpr Option kJson     {"json",     0,  nullptr,     Names::kNothing, flag<&Options::json>,
                            "Print a JSON object a line"};
constexpr Option kExitCodeOfLosses{"exit-code", 0, nullptr, Names::kNothing, flag<&Options::exit_code>,
                            "Exit with 1 when anything is lost"};
constexpr Option kJsonOfExplain{"json",  0, nullptr,     Names::kNothing, flag<&Options::json>,
                            "Print a JSON object"};
constexpr Option kFromResult{"from-result", 0, "POINTER", Names::kPointer, text<&Options::from_result>,
                            "Say of which members the result has what is there"};
constexpr Option kForce    {"force",    0,  nullptr,     Names::kNothing, flag<&Options::force>,
                            "Convert whatever layout the configuration is of"};
constexpr Option kAsIs     {"as-is",    0,  nullptr,     Names::kNothing, flag<&Options::as_is>,
                            "Take the document for the section, whatever it looks like"};
constexpr Option kAuto     {"auto",     0,  nullptr,     Names::kNothing, nothing_to_store,
                            "Convert each record to the layout that it is not of"};
constexpr Option kAt       {"at",       0,  "POINTER",   Names::kWord,    stream_at,
                            "Convert the value there, and leave the rest of a record as it is"};
constexpr Option kAtText   {"at-text",  0,  nullptr,     Names::kNothing, stream_at_text,
                            "The value there is a text that holds JSON", &kAt};
constexpr Option kId       {"id",       0,  "POINTER",   Names::kWord,    stream_id,
                            "What a record is called by in problems"};
constexpr Option kRejects  {"rejects",  0,  "FILE",      Names::kOutput,  stream_rejects,
                            "Keep rejected records in FILE, unchanged"};
constexpr Option kProblems {"problems", 0,  "FILE",      Names::kOutput,  stream_problems,
                            "Write problems to FILE, a JSON object a line, not to standard error"};
constexpr Option kOnReject {"on-reject", 0, "skip|null", Names::kWord,    stream_on_reject,
                            "A rejected record has no line in the output (default), or the line null"};
constexpr Option kMaxRejects{"max-rejects", 0, "N",      Names::kNumber,  stream_max_rejects,
                            "End early, with 1, when more than N records are rejected"};
constexpr Option kAcceptRejects{"accept-rejects", 0, nullptr, Names::kNothing, stream_accept_rejects,
                            "Exit with 0 also when records were rejected"};
constexpr Option kMaxRecord{"max-record", 0, "SIZE",     Names::kNumber,  stream_max_record,
                            "Reject longer records (64M); K, M and G may follow the number"};
constexpr Option kJobs     {"jobs",    'j', "N",         Names::kNumber,  stream_jobs,
                            "Convert in N threads (as many as there are cores for this process)"};
constexpr Option kBlock    {"block",    0,  "SIZE",      Names::kNumber,  stream_block,
                            "Read SIZE bytes at a time (256K), at most 1M"};
constexpr Option kSummary  {"summary",  0,  "text|json|none", Names::kWord, stream_summary,
                            "What is printed at the end; text where standard error is a terminal, else none"};
constexpr Option kProgress {"progress", 0,  nullptr,     Names::kNothing, stream_progress,
                            "Show progress and the summary also where standard error is no terminal"};
constexpr Option kOutputDir{"output-dir", 0, "FOLDER",   Names::kOutput,  stream_output_dir,
                            "Write files of the same names in FOLDER; FILE may be several, and folders", nullptr,
                            &kOutput};
constexpr Option kResume   {"resume",   0,  nullptr,     Names::kNothing, stream_resume,
                            "Leave alone what is in FOLDER already, newer than its input and whole", &kOutputDir};
constexpr Option kNamesOfRejects = of_many(kRejects, kOutputDir,
                            "Keep the names of rejected files in FILE, one a line");
constexpr Option kProblemsOfMany = of_many(kProblems, kOutputDir, kProblems.purpose);
constexpr Option kMaxRejectsOfMany = of_many(kMaxRejects, kOutputDir,
                            "End early, with 1, when more than N files are rejected");
constexpr Option kAcceptRejectsOfMany = of_many(kAcceptRejects, kOutputDir,
                            "Exit with 0 also when files were rejected");
constexpr Option kJobsOfMany = of_many(kJobs, kOutputDir, kJobs.purpose);
constexpr Option kSummaryOfMany = of_many(kSummary, kOutputDir, kSummary.purpose);
constexpr Option kProgressOfMany = of_many(kProgress, kOutputDir, kProgress.purpose);
constexpr Option kClosed   {"closed",   0,  nullptr,     Names::kNothing, flag<&Options::closed>,
                            "Forbid members that are not known"};
constexpr Option kAll      {"all",      0,  nullptr,     Names::kNothing, flag<&Options::all>,
                            "Print an array: what no configuration can have beside the rest comes in another one"};
constexpr Option kAsMarkdown{"markdown", 0, nullptr,     Names::kNothing, flag<&Options::as_markdown>,
                            "Print a page in Markdown, as those of docs/mapping are"};
constexpr Option kAsJson   {"json",     0,  nullptr,     Names::kNothing, flag<&Options::as_json>,
                            "Print an array of objects: old, new, kind, values, default", nullptr, &kAsMarkdown};
constexpr Option kLossesOfStream{"losses", 0, nullptr,   Names::kNothing, flag<&Options::losses>,
                            "Count what the other layout will not hold, by places, and print that at the end"};
constexpr Option kJsonCensus{"json",    0,  nullptr,     Names::kNothing, census_json,
                            "Print one JSON object"};
constexpr Option kHtml     {"html",     0,  "FILE",      Names::kOutput,  census_html,
                            "Write a page to look at, which needs nothing else, to FILE, too"};
constexpr Option kExitCode {"exit-code", 0, nullptr,     Names::kNothing, flag<&Options::exit_code>,
                            "Exit with 1 when there is a difference"};

constexpr const Option* kDirections[] = {&kToNew, &kToOld};
constexpr const Option* kDirectionsOrAuto[] = {&kToNew, &kToOld, &kAuto};
constexpr const Option* kOfToNew[] = {
    &kBase, &kChangeAsMergePatch, &kPartial, &kLosses, &kStrict, &kDslVlan, &kForce, &kOutput, &kCompact, &kIndent,
    &kOutputDir, &kResume, &kNamesOfRejects, &kProblemsOfMany, &kMaxRejectsOfMany, &kAcceptRejectsOfMany,
    &kJobsOfMany, &kSummaryOfMany, &kProgressOfMany, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfEitherWay[] = {
    &kPartial, &kLosses, &kStrict, &kDslVlan, &kForce, &kOutput, &kCompact, &kIndent, &kOutputDir, &kResume,
    &kNamesOfRejects, &kProblemsOfMany, &kMaxRejectsOfMany, &kAcceptRejectsOfMany, &kJobsOfMany, &kSummaryOfMany,
    &kProgressOfMany, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfLosses[] = {
    &kFromOld, &kFromNew, &kJson, &kExitCodeOfLosses, &kDslVlan, &kForce, &kOutput, &kOutputDir, &kResume,
    &kNamesOfRejects, &kProblemsOfMany, &kMaxRejectsOfMany, &kAcceptRejectsOfMany, &kJobsOfMany, &kSummaryOfMany,
    &kProgressOfMany, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfCheck[] = {
    &kFromOld, &kFromNew, &kJson, &kDslVlan, &kForce, &kOutput, &kOutputDir, &kResume, &kNamesOfRejects,
    &kProblemsOfMany, &kMaxRejectsOfMany, &kAcceptRejectsOfMany, &kJobsOfMany, &kSummaryOfMany, &kProgressOfMany,
    &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfExplain[] = {
    &kFromResult, &kFromOld, &kFromNew, &kJsonOfExplain, &kDslVlan, &kForce, &kOutput, &kErrors, &kColor,
    &kShowSecrets, &kHelp};
constexpr const Option* kOfSection[] = {
    &kToNew, &kToOld, &kBase, &kChangeAsMergePatch, &kPartial, &kAsIs, &kForce, &kOutput, &kCompact, &kIndent,
    &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfDiff[] = {
    &kMergePatch, &kExitCode, &kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfApply[] = {&kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfStream[] = {
    &kToNew, &kToOld, &kAuto, &kLossesOfStream, &kForce, &kAt, &kAtText, &kId, &kDslVlan, &kOutput, &kRejects,
    &kProblems, &kOnReject, &kMaxRejects, &kAcceptRejects, &kMaxRecord, &kJobs, &kBlock, &kSummary, &kProgress,
    &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfCensus[] = {
    &kFromOld, &kFromNew, &kJsonCensus, &kHtml, &kForce, &kAt, &kAtText, &kId, &kDslVlan, &kOutput, &kRejects,
    &kProblems, &kMaxRecord, &kJobs, &kBlock, &kProgress, &kErrors, &kColor, &kShowSecrets, &kHelp};
constexpr const Option* kOfSections[] = {&kOutput, &kErrors, &kColor, &kHelp};
constexpr const Option* kOfSchema[] = {&kClosed, &kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kHelp};
constexpr const Option* kOfExample[] = {&kAll, &kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kHelp};
constexpr const Option* kOfMapping[] = {
    &kAsJson, &kAsMarkdown, &kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kHelp};
constexpr const Option* kOfQuestions[] = {&kErrors, &kColor, &kHelp};
constexpr const Option* kGeneral[] = {
    &kOutput, &kCompact, &kIndent, &kErrors, &kColor, &kShowSecrets, &kHelp, &kVersion};

//                       name    names         stored by               purpose                           is required
constexpr Operand kOldFile[] = {
    {"FILE", Names::kInput, stream_input, "The old configuration; - (default) is standard input", false, true}};
constexpr Operand kNewFile[] = {
    {"FILE", Names::kInput, stream_input, "The new configuration; - (default) is standard input", false, true}};
constexpr Operand kEitherFile[] = {
    {"FILE", Names::kInput, stream_input, "The configuration; - (default) is standard input", false, true}};
constexpr Operand kFileAndPointer[] = {
    {"FILE", Names::kInput, text<&Options::file>, "The configuration; - is standard input", true},
    {"POINTER", Names::kPointer, text<&Options::pointer>, "The JSON Pointer of the member, as in messages", false}};
constexpr Operand kSectionAndFile[] = {
    {"NAME", Names::kSection, text<&Options::section>,
     "The section's name in the layout that it is converted to", true},
    {"FILE", Names::kInput, text<&Options::file>,
     "The section in the other layout, or a whole configuration; - (default) is standard input", false}};
constexpr Operand kBaseAndOther[] = {
    {"BASE", Names::kInput, text<&Options::from>, "The JSON to start from; - is standard input", true},
    {"OTHER", Names::kInput, text<&Options::other>, "The JSON to arrive at; - is standard input", true}};
constexpr Operand kBaseAndDifference[] = {
    {"BASE", Names::kInput, text<&Options::from>, "The JSON to start from; - is standard input", true},
    {"DIFFERENCE", Names::kInput, text<&Options::other>,
     "A JSON Patch (array) or JSON Merge Patch (object); - is standard input", true}};
constexpr Operand kStreams[] = {
    {"FILE", Names::kInput, nothing_to_store, "Newline-delimited JSON; - (default) is standard input", false, true}};
constexpr Operand kSectionOrPlace[] = {
    {"SECTION|POINTER", Names::kSection, text<&Options::asked>,
     "A section's name in either layout, or a place, in which * is any entry", false}};
constexpr Operand kLayoutAndSection[] = {
    {"old|new", Names::kWord, text<&Options::layout>, "The layout", true},
    {"SECTION", Names::kSection, text<&Options::asked>,
     "A section's name in that layout; the whole without it", false}};
constexpr Operand kTopic[] = {
    {"COMMAND", Names::kCommand, text<&Options::topic>, "The command to tell of", false}};

constexpr Command kCommands[] = {
    {"to-new", "Convert a whole configuration to the new layout",
     kOldFile, {}, kOfToNew,
     "With --base the difference is printed whatever failed on the way; the messages tell, the exit status is 0.",
     "kcnvrt to-new gateway.old.json -o gateway.new.json", to_new},
    {"to-old", "Convert a whole configuration to the old layout",
     kNewFile, {}, kOfEitherWay,
     "",
     "kcnvrt to-old --compact < gateway.new.json > gateway.old.json", to_old},
    {"convert", "Convert a whole configuration to the layout that it is not in",
     kEitherFile, {}, kOfEitherWay,
     "One with an object \"Device\" is in the new layout, any other in the old one. Of an old one the need for "
     "--dsl-vlan is found out.",
     "kcnvrt convert gateway.json -o converted.json", convert},
    {"losses", "List what of a configuration the other layout will not hold",
     kEitherFile, {}, kOfLosses,
     "It is what does not come back as it was: dropped (nothing uses it), cut (its beginning comes back), changed, "
     "defaulted (comes back although it was not there), renumbered (an entry of a list). Of a rejected configuration "
     "it is what the rest loses that can be converted, and standard error says why it is rejected.",
     "kcnvrt losses gateway.old.json", losses},
    {"check", "Say what a conversion would report and lose, and convert nothing",
     kEitherFile, {}, kOfCheck,
     "Problems and losses go to standard output. Silent with exit status 0 when there is nothing to say, otherwise 1.",
     "kcnvrt check gateway.json && kcnvrt convert gateway.json -o new.json", check},
    {"explain", "Say what becomes of a member of a configuration",
     kFileAndPointer, {}, kOfExplain,
     "It is used (with the places in the other layout that depend on it, and what they would be without it), "
     "regenerated (the conversion makes it anew, whatever it says) or lost.",
     "kcnvrt explain gateway.old.json /ifaces/eth4/mac", explain},
    {"section", "Convert one section of a configuration",
     kSectionAndFile, kDirections, kOfSection,
     "kcnvrt sections lists the names. A whole configuration has the section taken out, which a note tells; --as-is "
     "leaves it whole. With --base the difference is printed whatever failed on the way; the messages "
     "tell, the exit status is 0.",
     "kcnvrt section wan_pvid --to-old wan_pvid.new.json", section},
    {"stream", "Convert newline-delimited JSON, line for line, in order",
     kStreams, kDirectionsOrAuto, kOfStream,
     "A line is a configuration, or with --at a record that holds one. Results are compact. A record that is rejected "
     "does not stop the run: --rejects keeps it, problems say why.\n"
     "OUT is replaced when all is done; without -o lines go out as they are ready. A line that is blank is no record. "
     "Compressed streams are a pipe's business.",
     "kcnvrt stream --to-new --at /config fleet.ndjson -o new.ndjson", stream},
    {"census", "Count what becomes of a fleet's configurations",
     kStreams, {}, kOfCensus,
     "How many devices convert, convert with warnings, lose something or are rejected, and for each place how many, "
     "with the first of them: by --id, else by file and line. Nothing is converted for good, and no value is shown.",
     "kcnvrt census fleet.ndjson --at /config --id /serial --html census.html", census},
    {"sections", "List the sections that can be converted alone",
     {}, {}, kOfSections,
     "One a line: old (for --to-old) or new (for --to-new), a tab, the name.",
     "kcnvrt sections | grep ^old", sections},
    {"mapping", "Tell which places of the layouts become each other, and how",
     kSectionOrPlace, {}, kOfMapping,
     "Of a place the values are told, what each becomes, and the messages. [ppp] is an entry whose \"type\" is "
     "\"ppp\", a|b either name, ** all below a value that is carried whole.\n"
     "A place that its section does not know would be dropped, and that is told.",
     "kcnvrt mapping /wifi/Channel", mapping},
    {"schema", "Print a layout as a JSON Schema, for editors",
     kLayoutAndSection, {}, kOfSchema,
     "Draft 2020-12. What the conversion would report is invalid, what it takes is valid; the conversion is the judge.",
     "kcnvrt schema old -o old.schema.json", schema},
    {"example", "Print a complete configuration of a layout",
     kLayoutAndSection, {}, kOfExample,
     "It has every member that kcnvrt mapping tells of, and is converted without a message. With --all a second one "
     "has the forms of another generation of devices: older QoS, users in an array, VLANs that are tied to DSL "
     "services.",
     "kcnvrt example new wan_pvid", example},
    {"diff", "Print what has to change in BASE to make it equal to OTHER",
     kBaseAndOther, {}, kOfDiff,
     "",
     "kcnvrt diff gateway.new.json candidate.new.json -o change.json", diff},
    {"apply", "Print BASE with a difference applied",
     kBaseAndDifference, {}, kOfApply,
     "",
     "kcnvrt apply gateway.new.json change.json -o candidate.new.json", apply},
    {"self-check", "Check the library's section tables",
     {}, {}, kOfQuestions,
     "Silent with exit status 0 when they are sound; otherwise a message and 1.",
     "kcnvrt self-check && echo sound", self_check},
    {"help", "Show what a command does and takes",
     kTopic, {}, kOfQuestions,
     "",
     "kcnvrt help to-new", help},
};

// clang-format on

}  // namespace

constexpr Option kHelp{"help", 'h', nullptr, Names::kNothing, nullptr, "Show this page"};
constexpr Option kVersion{"version", 'V', nullptr, Names::kNothing, nullptr, "Print the version"};

std::span<const Command> all_commands() {
    return kCommands;
}

const Command* find_command(std::string_view name) {
    const auto found = std::ranges::find(kCommands, name, &Command::name);
    return found != std::end(kCommands) ? found : nullptr;
}

OptionList general_options() {
    return kGeneral;
}

}  // namespace kcnvrt
