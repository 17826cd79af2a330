#include "commands/help.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "commands/arguments.h"
#include "disk/output.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kMargin = 2;
constexpr std::size_t kWidestName = 24;  // what is said of a wider one starts on the next line

}  // namespace

const char* const kPurpose = "Converts a gateway's configuration between its two JSON layouts";
const char* const kExample = "kcnvrt to-new gateway.old.json -o gateway.new.json";
const char* const kNotes =
    "kcnvrt help COMMAND tells what a command takes, with an example.\n"
    "Messages go to standard error, one a line: FILE:LINE:COLUMN: severity: POINTER: message [function]. Standard "
    "input "
    "is shown as -. Nothing is withheld for a warning.\n"
    "A member given twice in one object is refused, since one of its values would be lost in silence; so is a NUL "
    "inside "
    "a text (except by diff and apply, which carry it).";

Rows exit_statuses() {
    return {{"0", "done, also when the reader of the result went away"},
            {"1",
             "the document was rejected, or is of another layout; with --exit-code, there is a difference or a loss; "
             "check has "
             "something to say"},
            {"2", "wrong usage"},
            {"3", "a file could not be read, parsed or written, or memory ran out"}};
}

namespace {

// Ends the line. The lines that follow the first start in the column `indent`.
void append_words(std::string& page, std::string_view text, std::size_t indent) {
    std::size_t column = page.size() - (page.rfind('\n') + 1);
    bool is_first = true;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        if (!is_first && column + 1 + word.size() > kWidth) {
            page.append("\n").append(indent, ' ');
            column = indent;
        } else if (!is_first) {
            page += ' ';
            ++column;
        }
        page += word;
        column += word.size();
        is_first = false;
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    page += '\n';
}

void append_paragraphs(std::string& page, std::string_view text) {
    while (!text.empty()) {
        const std::string_view paragraph = text.substr(0, text.find('\n'));
        page += '\n';
        append_words(page, paragraph, 0);
        text.remove_prefix(std::min(paragraph.size() + 1, text.size()));
    }
}

void append_row(std::string& page, const Row& row, std::size_t indent) {
    page.append(kMargin, ' ').append(row.first);
    std::size_t column = kMargin + row.first.size();
    if (column + kMargin > indent) {
        page += '\n';
        column = 0;
    }
    page.append(indent - column, ' ');
    append_words(page, row.second, indent);
}

// Nothing where there are no rows.
void append_group(std::string& page, const char* title, const Rows& rows) {
    std::size_t widest = 0;
    for (const Row& row : rows)
        if (row.first.size() <= kWidestName) widest = std::max(widest, row.first.size());
    if (!rows.empty()) page.append("\n").append(title).append(":\n");
    for (const Row& row : rows) append_row(page, row, kMargin + widest + kMargin);
}

Rows rows_of(std::span<const Command> commands) {
    Rows rows;
    for (const Command& command : commands) rows.emplace_back(command.name, command.purpose);
    return rows;
}

Rows rows_of(std::span<const Operand> operands) {
    Rows rows;
    for (const Operand& operand : operands) rows.emplace_back(operand.name, operand.purpose);
    return rows;
}

// All names stand in one column, behind the place of a letter.
Rows rows_of(OptionList options) {
    Rows rows;
    for (const Option* option : options) {
        std::string name = option->letter != 0 ? std::string("-") + option->letter + ", --" : "    --";
        name += option->name;
        if (option->value != nullptr) name.append(" ").append(option->value);
        rows.emplace_back(std::move(name), option->purpose);
    }
    return rows;
}

}  // namespace

std::string usage_of(const Command& command) {
    std::string usage = std::string("kcnvrt ") + command.name;
    const char* separator = " (";
    for (const Option* option : command.choice) {
        usage.append(separator).append("--").append(option->name);
        separator = " | ";
    }
    usage += command.choice.empty() ? " [OPTION...]" : ") [OPTION...]";
    for (const Operand& operand : command.operands) {
        const std::string name = std::string(operand.name) + (operand.repeats ? "..." : "");
        usage += operand.is_required ? " " + name : " [" + name + "]";
    }
    return usage;
}

namespace {

void append_example(std::string& page, const char* example) {
    page.append("\nExample: ").append(example).append("\n");
}

std::string page_of_tool() {
    std::string page = std::string(kPurpose) + "\n\nUsage: kcnvrt COMMAND [OPTION...] [ARGUMENT...]\n";
    append_group(page, "Commands", rows_of(all_commands()));
    append_group(page, "Options", rows_of(general_options()));
    append_paragraphs(page, kNotes);
    append_group(page, "Exit status", exit_statuses());
    append_example(page, kExample);
    return page;
}

std::string page_of(const Command& command) {
    std::string page = std::string(command.purpose) + "\n\nUsage: " + usage_of(command) + "\n";
    append_group(page, "Arguments", rows_of(command.operands));
    append_group(page, "Options", rows_of(command.options));
    append_paragraphs(page, command.notes);
    append_example(page, command.example);
    return page;
}

}  // namespace

std::string help_page(const Command* command) {
    return command == nullptr ? page_of_tool() : page_of(*command);
}

ExitStatus help(const Options& options) {
    const Command* const command = find_command(options.topic);
    if (command == nullptr && !options.topic.empty()) fail_by_unknown_command(options.topic);
    write_text(kStandardStream, help_page(command));
    return kConverted;
}

}  // namespace kcnvrt
