#include "commands/commands.h"

#include <k_cnvrt.h>

#include <algorithm>

#include "commands/answer.h"
#include "disk/output.h"
#include "files/many_files.h"
#include "print/diagnostics.h"

namespace kcnvrt {

namespace {

ExitStatus answer(const Question& question, const Options& options) {
    return deliver(ask(question, options), options);
}

// Of one file, or of many.
ExitStatus answer_files(const char* command, const Question& question, const Options& options) {
    return are_many_files(options, command) ? convert_files({command, question.operation}, options)
                                            : answer(question, options);
}

// Whether the difference that is the answer changes nothing. An empty merge patch makes an object of what is none.
bool changes_nothing(const Answer& difference) {
    const std::string_view base = difference.text.text.view();
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
    return answer_files("to-new", {K_TEXT_TO_NEW, nullptr, &options.file, base_of(options)}, options);
}

ExitStatus to_old(const Options& options) {
    return answer_files("to-old", {K_TEXT_TO_OLD, nullptr, &options.file, nullptr}, options);
}

ExitStatus convert(const Options& options) {
    return answer_files("convert", {K_TEXT_CONVERT, nullptr, &options.file, nullptr}, options);
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
