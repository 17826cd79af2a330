#include "record_converter.h"

#include <new>

#include "census/findings.h"
#include "options.h"
#include "print/printable.h"
#include "source.h"
#include "trees.h"

namespace kcnvrt {

namespace {

uint32_t operation_of(const Options& options) {
    if (options.to_new) return K_TEXT_TO_NEW;
    return options.to_old ? K_TEXT_TO_OLD : K_TEXT_CONVERT;
}

// The thread's trees, which go together.
class TreesOfRecord {
public:
    TreesOfRecord() = default;
    ~TreesOfRecord() { give_back_trees(); }
    TreesOfRecord(const TreesOfRecord&) = delete;
    TreesOfRecord& operator=(const TreesOfRecord&) = delete;
};

std::string too_long(std::size_t longest) {
    return "the record is longer than " + std::to_string(longest) + " bytes";
}

// Whether it is JSON; if not, what is wrong with it.
bool is_json(std::string_view record, RecordProblems* problems) {
    k_text_result_t result;
    const Json json = text::read_source({K_TEXT_IN_TEXT, record, text::Shape::kAnyValue}, result);
    if (result.status == K_TEXT_OUT_OF_MEMORY) throw std::bad_alloc();
    k_text_problem_t problem;
    problem.size = sizeof problem;
    if (problems != nullptr && k_text_problem(&result, 0, &problem) == 0) problems->add_of_record(problem);
    return json != nullptr;
}

}  // namespace

RecordConverter::RecordConverter(const Options& options)
    : options_(options),
      operation_(operation_of(options)),
      pointers_(options.stream.pointers),
      longest_(options.stream.sizes.longest) {}

// Not even its id is looked for: of a longer one only the beginning is there.
void RecordConverter::reject_too_long(Record record, Outcome& outcome) const {
    record.text = {};
    RecordProblems(record, pointers_, outcome.problems).add_error(nullptr, too_long(longest_));
    find_losses(record, nullptr, outcome);
}

Verdict RecordConverter::convert(const Record& record, Outcome& outcome) const {
    Verdict verdict;
    if (record.text.size() > longest_) {
        reject_too_long(record, outcome);
        return verdict;
    }
    const TreesOfRecord trees;
    RecordProblems problems(record, pointers_, outcome.problems);
    text::Sought at = {{}, {0, 1, 1}, record.text.size()};
    if (!pointers_.at.empty()) at = find_value(record.text, pointers_.at);
    const bool is_found = pointers_.at.empty() || is_whole(record, at, problems);
    if (!is_found || !convert_at(record, at, outcome, verdict)) find_losses(record, nullptr, outcome);
    return verdict;
}

// Whether there is a configuration, and what stands around it is JSON; the configuration is looked at when it is
// converted.
bool RecordConverter::is_whole(const Record& record, const text::Sought& at, RecordProblems& problems) const {
    if (at.spot.line == 0) {
        if (is_json(record.text, &problems))
            problems.add_error(pointers_.at.c_str(), "the record has no value at " + pointers_.at);
        return false;
    }
    std::string around(record.text.substr(0, at.spot.offset));
    around.append("0").append(record.text.substr(at.spot.offset + at.length));
    if (is_json(around, nullptr) && !may_be_too_deep(record.text)) return true;
    return is_json(record.text, &problems);
}

// False where there is no text that could be converted.
bool RecordConverter::convert_at(const Record& record, const text::Sought& at, Outcome& outcome,
                                 Verdict& verdict) const {
    RecordProblems problems(record, pointers_, outcome.problems);
    std::optional<std::string> held;
    std::string_view configuration = value_at(record.text, at);
    if (pointers_.holds_text) {
        held = text_in(configuration);
        if (!held && is_json(record.text, &problems))
            problems.add_error(pointers_.at.c_str(), "the value at " + pointers_.at + " is no text", at.spot.column);
        if (!held) return false;
        configuration = *held;
    }
    k_text_request_t request = request_of(operation_, configuration, options_);
    request.indent = K_TEXT_COMPACT;
    const Result result = run_request(request);
    const int status = k_text_status(result.get());
    if (status == K_TEXT_OUT_OF_MEMORY) throw std::bad_alloc();

    k_text_problem_t problem;
    problem.size = sizeof problem;
    for (std::size_t i = 0; k_text_problem(result.get(), i, &problem) == 0; ++i)
        problems.add_of_configuration(problem, at.spot.column);
    find_losses(record, result.get(), outcome);
    verdict.is_converted = status == K_TEXT_CONVERTED;
    verdict.has_warnings = has_warnings(result.get());
    verdict.has_losses = k_text_loss_count(result.get()) != 0;
    give_back_large_trees();  // before there are two of a large output
    if (verdict.is_converted && !options_.stream.is_census)
        add_line(record, at, output_of(result.get()), outcome.lines);
    return true;
}

void RecordConverter::add_line(const Record& record, const text::Sought& at, std::string_view output,
                               std::string& lines) const {
    const std::string_view before = record.text.substr(0, at.spot.offset);
    const std::string_view behind = record.text.substr(at.spot.offset + at.length);
    lines.reserve(lines.size() + before.size() + output.size() + behind.size() + 1);
    lines.append(before).append(pointers_.holds_text ? std::string_view(json_string_of(output)) : output);
    lines.append(behind).append("\n");
}

// What is not even a configuration is an error of the whole.
void RecordConverter::find_losses(const Record& record, const k_text_result_t* result, Outcome& outcome) const {
    if (!options_.losses) return;
    const bool has_findings = result == nullptr || k_text_problem_count(result) + k_text_loss_count(result) != 0;
    if (!has_findings) return;
    std::string id = pointers_.id ? id_of(record.text, pointers_.id) : "null";
    if (id == "null") {
        id.clear();
        append_json_string(id, *record.file + ":" + std::to_string(record.line));
    }
    if (result == nullptr) outcome.findings.push_back({"error", "", id});
    if (result != nullptr) add_findings(result, id, outcome.findings);
}

}  // namespace kcnvrt
