#include "commands/answer.h"

#include <new>

#include "commands/loss_lines.h"
#include "disk/output.h"

namespace kcnvrt {

namespace {

constexpr int kReadableIndent = 4;

uint32_t flags_of(const Options& options) {
    uint32_t flags = 0;
    if (options.dsl_vlan) flags |= K_TEXT_DSL_VLAN;
    if (options.merge_patch) flags |= K_TEXT_MERGE_PATCH;
    if (options.partial) flags |= K_TEXT_PARTIAL;
    if (options.force) flags |= K_TEXT_FORCE;
    if (options.as_is) flags |= K_TEXT_AS_IS;
    if (options.losses) flags |= K_TEXT_TELL_LOSSES;
    if (options.strict) flags |= K_TEXT_STRICT;
    if (options.show_secrets) flags |= K_TEXT_SHOW_SECRETS;
    return flags;
}

int indent_of(const Options& options) {
    return options.compact ? static_cast<int>(K_TEXT_COMPACT) : options.indent.value_or(kReadableIndent);
}

Source read_source(const std::string* file) {
    if (file == nullptr) return {};
    return {*file, read_file(*file)};
}

}  // namespace

k_text_request_t request_of(uint32_t operation, std::string_view text, const Options& options) {
    k_text_request_t request = {};
    request.size = sizeof request;
    request.operation = operation;
    request.flags = flags_of(options);
    request.indent = indent_of(options);
    request.text = text.data();
    request.text_length = text.size();
    return request;
}

uint32_t towards(const Options& options) {
    uint32_t flags = 0;
    if (options.to_new) flags |= K_TEXT_TOWARDS_NEW;
    if (options.to_old) flags |= K_TEXT_TOWARDS_OLD;
    return flags;
}

Answer ask(const Question& question, const Options& options) {
    Answer answer;
    answer.text = read_source(question.text);
    answer.other = read_source(question.other);
    k_text_request_t request = request_of(question.operation, answer.text.text.view(), options);
    request.flags |= question.flags;
    request.section = question.section;
    request.pointer = question.pointer;
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

ExitStatus deliver(const Answer& answer, const Options& options) {
    k_text_result_t* const result = answer.result.get();
    const Messages messages(options.errors, options.color);
    messages.print(result, answer.text, answer.other);
    print_losses(result, answer.text.file, messages);
    const ExitStatus status = exit_status_of(result);
    if (k_text_output(result, nullptr) != nullptr) write_result(options.output, options.inputs, output_of(result));
    return status;
}

}  // namespace kcnvrt
