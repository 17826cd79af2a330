// Manual pages: the words of the help pages, in the language of roff's "man" macros.

#include <k_cnvrt_text.h>

#include "commands/help.h"
#include "pages.h"

namespace kcnvrt::pages {

namespace {

// Text as roff prints it: a dash is a minus, and a line never starts with a request.
std::string printed(std::string_view text) {
    std::string result;
    if (text.starts_with('.') || text.starts_with('\'')) result += "\\&";
    for (const char character : text) {
        if (character == '\\') {
            result += "\\e";
        } else if (character == '-') {
            result += "\\-";
        } else {
            result += character;
        }
    }
    return result;
}

void append_head(std::string& page, const std::string& name, const char* purpose) {
    page.append(".\\\" Made of the tool's table of commands.\n.TH \"")
        .append(printed(name))
        .append("\" 1 \"\" \"kcnvrt ");
    page.append(k_text_version()).append("\" \"kcnvrt\"\n.ad l\n.nh\n.SH NAME\n").append(printed(name)).append(" \\- ");
    page.append(printed(purpose)).append("\n.SH SYNOPSIS\n");
}

void append_paragraphs(std::string& page, const std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        page.append(start == 0 ? "" : ".PP\n").append(printed(text.substr(start, end - start))).append("\n");
        start = end + 1;
    }
}

void append_item(std::string& page, const std::string& name, std::string_view text) {
    page.append(".TP\n").append(name).append("\n").append(printed(text)).append("\n");
}

std::string bold(const std::string& text) {
    return "\\fB" + printed(text) + "\\fR";
}

void append_options(std::string& page, OptionList options) {
    page += ".SH OPTIONS\n";
    for (const Option* option : options) {
        std::string name = option->letter != 0 ? bold(std::string("-") + option->letter) + ", " : "";
        name += bold(std::string("--") + option->name);
        if (option->value != nullptr) name.append(" \\fI").append(printed(option->value)).append("\\fR");
        append_item(page, name, option->purpose);
    }
}

void append_exit_statuses(std::string& page) {
    page += ".SH EXIT STATUS\n";
    for (const Row& row : exit_statuses()) append_item(page, bold(row.first), row.second);
}

void append_end(std::string& page, const char* example, const char* see_also) {
    page.append(".SH EXAMPLES\n.nf\n").append(printed(example)).append("\n.fi\n.SH SEE ALSO\n");
    page.append(see_also).append("\n");
}

}  // namespace

std::string manual_of(const Command& command) {
    std::string page;
    append_head(page, std::string("kcnvrt-") + command.name, command.purpose);
    page.append(printed(usage_of(command))).append("\n");
    if (*command.notes != '\0') page += ".SH DESCRIPTION\n";
    append_paragraphs(page, command.notes);
    if (!command.operands.empty()) page += ".SH ARGUMENTS\n";
    for (const Operand& operand : command.operands)
        append_item(page, std::string("\\fI") + printed(operand.name) + "\\fR", operand.purpose);
    append_options(page, command.options);
    append_exit_statuses(page);
    append_end(page, command.example, ".BR kcnvrt (1)");
    return page;
}

std::string manual_of_tool() {
    std::string page;
    append_head(page, "kcnvrt", kPurpose);
    page += "kcnvrt \\fICOMMAND\\fR [\\fIOPTION\\fR...] [\\fIARGUMENT\\fR...]\n.SH COMMANDS\n";
    for (const Command& command : all_commands()) append_item(page, bold(command.name), command.purpose);
    append_options(page, general_options());
    page += ".SH NOTES\n";
    append_paragraphs(page, kNotes);
    append_exit_statuses(page);
    std::string others;
    for (const Command& command : all_commands())
        others.append(others.empty() ? "" : ",\n").append(".BR kcnvrt\\-").append(printed(command.name)).append(" (1)");
    append_end(page, kExample, others.c_str());
    return page;
}

}  // namespace kcnvrt::pages
