#include "block_converter.h"

#include "options.h"

namespace kcnvrt {

namespace {

// With its line break.
std::string_view first_line(std::string_view text) {
    const std::size_t line_break = text.find('\n');
    return line_break == std::string_view::npos ? text : text.substr(0, line_break + 1);
}

// Without the carriage return that belongs to the line's end.
std::string_view text_of(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool is_blank(std::string_view text) {
    return text.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

BlockConverter::BlockConverter(const Options& options)
    : record_(options),
      keeps_rejects_(options.stream.rejects.has_value()),
      null_for_rejects_(options.stream.null_for_rejects) {}

Outcome BlockConverter::convert(Block& block) const {
    Outcome outcome;
    outcome.number = block.number;
    outcome.large = std::move(block.large);
    outcome.failure = block.failure;
    if (block.failure) return outcome;
    try {
        if (block.kind == Block::Kind::kLines) convert_lines(block, outcome);
        if (block.kind != Block::Kind::kLines) reject_piece(block, outcome);
    } catch (...) {
        outcome.failure = std::current_exception();
    }
    return outcome;
}

void BlockConverter::convert_lines(const Block& block, Outcome& outcome) const {
    Record record = {block.file, block.line, block.offset, {}};
    std::string_view rest = block.bytes;
    while (!rest.empty()) {
        const std::string_view line = first_line(rest);
        record.text = text_of(line);
        if (!is_blank(record.text)) convert_whole_line(record, line, outcome);
        outcome.tally.bytes += line.size();
        ++record.line;
        record.offset += line.size();
        rest.remove_prefix(line.size());
    }
}

// Where memory ends there is nothing of the record.
void BlockConverter::convert_whole_line(const Record& record, std::string_view line, Outcome& outcome) const {
    const Outcome::Mark before = outcome.end();
    try {
        convert_line(record, line, outcome);
    } catch (...) {
        outcome.go_back(before);
        throw;
    }
}

void BlockConverter::convert_line(const Record& record, std::string_view line, Outcome& outcome) const {
    ++outcome.tally.records;
    const Verdict verdict = record_.convert(record, outcome);
    if (verdict.is_converted) {
        ++outcome.tally.converted;
        outcome.tally.warned += verdict.has_warnings ? 1 : 0;
        outcome.tally.lossy += verdict.has_losses ? 1 : 0;
        outcome.tally.troubled += verdict.has_warnings || verdict.has_losses ? 1 : 0;
        return;
    }
    if (keeps_rejects_) outcome.rejects.append(line).append(line.ends_with('\n') ? "" : "\n");
    count_reject(outcome);
}

// A line that is too long is told of at its start, and counted at its end.
void BlockConverter::reject_piece(const Block& block, Outcome& outcome) const {
    if (block.kind == Block::Kind::kStart) record_.reject_too_long({block.file, block.line, block.offset, {}}, outcome);
    if (keeps_rejects_) outcome.rejects = block.bytes;
    outcome.tally.bytes = block.bytes.size();
    if (block.kind != Block::Kind::kEnd) return;
    if (keeps_rejects_ && !block.bytes.ends_with('\n')) outcome.rejects += '\n';
    ++outcome.tally.records;
    count_reject(outcome);
}

void BlockConverter::count_reject(Outcome& outcome) const {
    if (null_for_rejects_) outcome.lines += "null\n";
    ++outcome.tally.rejected;
    outcome.behind_rejects.push_back(outcome.end());
}

}  // namespace kcnvrt
