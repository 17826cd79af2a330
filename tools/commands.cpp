#include "commands.h"

#include <k_cnvrt.h>
#include <k_cnvrt_text.h>

#include <algorithm>
#include <new>

#include "diagnostics.h"
#include "output.h"
#include "result.h"

namespace kcnvrt {

namespace {

constexpr int kReadableIndent = 4;

// What a command asks of the text layer, and of which files.
struct Question {
    uint32_t operation;
    const char* section;
    const std::string* text;
    const std::string* other;  // null where there is none
};

uint32_t flags_of(const Options& options) {
    uint32_t flags = 0;
    if (options.dsl_vlan) flags |= K_TEXT_DSL_VLAN;
    if (options.merge_patch) flags |= K_TEXT_MERGE_PATCH;
    if (options.partial) flags |= K_TEXT_PARTIAL;
    if (options.force) flags |= K_TEXT_FORCE;
    if (options.as_is) flags |= K_TEXT_AS_IS;
    if (options.show_secrets) flags |= K_TEXT_SHOW_SECRETS;
    return flags;
}

int indent_of(const Options& options) {
    return options.compact ? static_cast<int>(K_TEXT_COMPACT) : options.indent.value_or(kReadableIndent);
}

// What the text layer makes of a question, and the texts that its problems are about.
struct Answer {
    Source text;
    Source other;
    Result result;
};

Source read_source(const std::string* file) {
    if (file == nullptr) return {};
    return {*file, read_file(*file)};
}

Answer ask(const Question& question, const Options& options) {
    Answer answer;
    answer.text = read_source(question.text);
    answer.other = read_source(question.other);
    k_text_request_t request = {};
    request.size = sizeof request;
    request.operation = question.operation;
    request.flags = flags_of(options);
    request.indent = indent_of(options);
    request.section = question.section;
    request.text = answer.text.text.bytes.get();
    request.text_length = answer.text.text.size;
    request.other = answer.other.text.bytes.get();
    request.other_length = answer.other.text.size;
    answer.result = run_request(request);
    return answer;
}

ExitStatus exit_status_of(const k_text_result_t* result) {
    switch (k_text_status(result)) {
        case K_TEXT_CONVERTED:
            return kConverted;
        case K_TEXT_REJECTED:
        case K_TEXT_WRONG_LAYOUT:
            return kRejected;
        case K_TEXT_UNREADABLE:
            return kUnusableFile;
        case K_TEXT_OUT_OF_MEMORY:
            throw std::bad_alloc();
        default:
            return kWrongUsage;
    }
}

// Prints what the text layer has to say, under the names of the files, and writes its output.
ExitStatus deliver(const Answer& answer, const Options& options) {
    Messages(options.errors, options.color).print(answer.result.get(), answer.text, answer.other);
    const ExitStatus status = exit_status_of(answer.result.get());
    if (k_text_output(answer.result.get(), nullptr) != nullptr)
        write_result(options.output, options.inputs, output_of(answer.result.get()));
    return status;
}

ExitStatus answer(const Question& question, const Options& options) {
    return deliver(ask(question, options), options);
}

// Whether the difference that is the answer changes nothing. An empty merge patch makes an object of what is none.
bool changes_nothing(const Answer& difference) {
    const std::string_view base(difference.text.text.bytes.get(), difference.text.text.size);
    const bool is_object = base.substr(std::min(base.find_first_not_of(" \t\r\n"), base.size())).starts_with('{');
    const std::string_view change = output_of(difference.result.get());
    return change == "[]" || (change == "{}" && is_object);
}

const std::string* base_of(const Options& options) {
    return options.base ? &*options.base : nullptr;
}

void append_names(std::string& names, const char* layout, uint32_t list) {
    const char* name;
    for (std::size_t i = 0; (name = k_text_section(list, i)) != nullptr; ++i) {
        names.append(layout).append("\t").append(name).append("\n");
    }
}

}  // namespace

ExitStatus to_new(const Options& options) {
    return answer({K_TEXT_TO_NEW, nullptr, &options.file, base_of(options)}, options);
}

ExitStatus to_old(const Options& options) {
    return answer({K_TEXT_TO_OLD, nullptr, &options.file, nullptr}, options);
}

ExitStatus convert(const Options& options) {
    return answer({K_TEXT_CONVERT, nullptr, &options.file, nullptr}, options);
}

ExitStatus section(const Options& options) {
    const uint32_t operation = options.to_old ? K_TEXT_SECTION_TO_OLD : K_TEXT_SECTION_TO_NEW;
    return answer({operation, options.section.c_str(), &options.file, base_of(options)}, options);
}

ExitStatus sections(const Options& options) {
    std::string names;
    append_names(names, "old", K_TEXT_OLD_SECTIONS);
    append_names(names, "new", K_TEXT_NEW_SECTIONS);
    write_text(options.output, names);
    return kConverted;
}

ExitStatus diff(const Options& options) {
    const Question question = {K_TEXT_DIFF, nullptr, &options.from, &options.other};
    const Answer difference = ask(question, options);
    const ExitStatus status = deliver(difference, options);
    return status == kConverted && options.exit_code && !changes_nothing(difference) ? kDifferent : status;
}

ExitStatus apply(const Options& options) {
    return answer({K_TEXT_APPLY, nullptr, &options.from, &options.other}, options);
}

// The check writes its findings to standard output, whence they become messages.
ExitStatus self_check(const Options& options) {
    StdoutSetAside aside;
    const bool sound = k_cnvrt_check_valid_hashes() == 0;
    Messages(options.errors, options.color).print_lines("kcnvrt", "k_cnvrt_check_valid_hashes", aside.restore());
    return sound ? kConverted : kRejected;
}

}  // namespace kcnvrt
