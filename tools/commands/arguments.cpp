#include "commands/arguments.h"

#include <getopt.h>
#include <k_cnvrt_text.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "commands/nearest.h"

namespace kcnvrt {

namespace {

// What getopt_long answers, beside an option's letter; from kFirstOption on it is the place of an option in the list.
constexpr int kEnd = -1;
constexpr int kOperand = 1;
constexpr int kNoValue = ':';
constexpr int kUnknown = '?';
constexpr int kFirstOption = 256;

std::string dashed(const Option& option) {
    return "--" + std::string(option.name);
}

// The same without the value behind it.
std::string without_value(const std::string& argument) {
    return argument.substr(0, argument.find('='));
}

bool names_file(const Option& option) {
    return option.names == Names::kInput || option.names == Names::kOutput;
}

bool contains(OptionList list, const Option* option) {
    return std::ranges::find(list, option) != list.end();
}

class Reader {
public:
    Reader(int argc, char** argv, Options& options) : argc_(argc), argv_(argv), options_(options) {}

    Request read();

private:
    void expect(OptionList list);
    void read_answer(int answer);
    void read_option(const Option& option);
    void read_value(const Option& option);
    void read_argument(int number);
    void read_command(const char* name);
    void read_operand(const char* value);
    void check() const;
    void check_choice() const;
    void check_section() const;
    void add_default_inputs();

    const Option& option_of(int answer) const;
    bool is_given(const Option* option) const { return contains(given_, option); }
    bool is_pointer_next() const;
    std::string option_as_written() const;
    [[noreturn]] void fail_by_unknown_option() const;
    [[noreturn]] void fail(const std::string& message) const { fail_by_usage(message, request_.command); }

    int argc_;
    char** argv_;
    Options& options_;
    Request request_;
    OptionList list_;  // what is looked for
    std::vector<option> long_options_;
    std::string letters_;
    std::vector<const Option*> given_;
    std::size_t operands_ = 0;
};

Request Reader::read() {
    int answer;
    expect(general_options());
    optind = 0;  // getopt starts anew
    opterr = 0;
    while ((answer = getopt_long(argc_, argv_, letters_.c_str(), long_options_.data(), nullptr)) != kEnd) {
        read_answer(answer);
        if (request_.question != nullptr) return request_;
    }
    while (optind < argc_) read_argument(optind++);
    if (request_.command != nullptr) {
        add_default_inputs();
        check();
    }
    return request_;
}

// The dash makes getopt give operands where they stand among the options, the colon makes it tell a missing value from
// an unknown option.
void Reader::expect(OptionList list) {
    list_ = list;
    letters_ = "-:";
    long_options_.clear();
    for (const Option* each : list) {
        const int place = kFirstOption + static_cast<int>(long_options_.size());
        long_options_.push_back({each->name, each->value != nullptr ? required_argument : no_argument, nullptr, place});
        if (each->letter == 0) continue;
        letters_ += each->letter;
        if (each->value != nullptr) letters_ += ':';
    }
    long_options_.push_back({});
}

void Reader::read_answer(int answer) {
    if (answer == kOperand) {
        read_argument(optind - 1);
    } else if (answer == kNoValue) {
        fail(std::string(argv_[optind - 1]) + " has no value");
    } else if (answer == kUnknown) {
        fail_by_unknown_option();
    } else {
        const Option& option = option_of(answer);
        // getopt takes the start of a name for the name, which a later version may have made another option's.
        if (answer >= kFirstOption && option_as_written() != dashed(option)) fail_by_unknown_option();
        read_option(option);
    }
}

const Option& Reader::option_of(int answer) const {
    if (answer >= kFirstOption) return *list_[static_cast<std::size_t>(answer - kFirstOption)];
    return **std::ranges::find_if(list_, [answer](const Option* each) { return each->letter == answer; });
}

std::string Reader::option_as_written() const {
    const bool is_before_value = optarg != nullptr && optarg == argv_[optind - 1];
    return without_value(argv_[optind - (is_before_value ? 2 : 1)]);
}

void Reader::read_option(const Option& option) {
    if (option.store == nullptr) {
        request_.question = &option;
        if (request_.command == nullptr && optind < argc_) request_.command = find_command(argv_[optind]);
    } else {
        read_value(option);
        given_.push_back(&option);
    }
}

// An empty value names no file and no number. One that starts with a dash is rather the next option, and the argument
// behind it would be taken for something else.
void Reader::read_value(const Option& option) {
    if (option.value != nullptr) {
        const std::string_view value = optarg;
        const bool is_next_argument = optarg == argv_[optind - 1];
        // An empty pointer is that of the whole.
        if (value.empty() && option.names != Names::kPointer)
            fail(dashed(option) + (is_next_argument ? " has no value" : "= has no value"));
        if (is_next_argument && names_file(option) && value.starts_with('-') && value != kStandardStream)
            fail(dashed(option) + " has no value (a file can be called ./" + optarg + ")");
        if (is_given(&option)) fail(dashed(option) + " is given twice");
        if (option.names == Names::kInput) options_.inputs.push_back(optarg);
    }
    const char* const expected = option.store(options_, optarg);
    if (expected != nullptr) fail(dashed(option) + " takes " + expected + ", not \"" + optarg + "\"");
}

void Reader::read_argument(int number) {
    const char* const argument = argv_[number];
    if (*argument == '\0' && !is_pointer_next()) fail("argument " + std::to_string(number) + " is empty");
    if (request_.command == nullptr) {
        read_command(argument);
    } else {
        read_operand(argument);
    }
}

bool Reader::is_pointer_next() const {
    if (request_.command == nullptr || operands_ >= request_.command->operands.size()) return false;
    return request_.command->operands[operands_].names == Names::kPointer;
}

// Options may stand before the command that they are for.
void Reader::read_command(const char* name) {
    request_.command = find_command(name);
    if (request_.command == nullptr) fail_by_unknown_command(name);
    expect(request_.command->options);
    for (const Option* option : given_)
        if (!contains(list_, option)) fail(dashed(*option) + " is no option of " + name);
}

void Reader::read_operand(const char* value) {
    const auto operands = request_.command->operands;
    if (operands_ != 0 && operands[operands_ - 1].repeats) --operands_;
    if (operands_ == operands.size()) fail("\"" + std::string(value) + "\" is an argument too many");
    const Operand& operand = operands[operands_++];
    operand.store(options_, value);
    if (operand.names == Names::kInput) options_.inputs.push_back(value);
}

void Reader::check() const {
    const auto operands = request_.command->operands;
    if (operands_ < operands.size() && operands[operands_].is_required)
        fail(std::string(operands[operands_].name) + " is missing");
    for (const Option* option : given_) {
        if (option->needs != nullptr && !is_given(option->needs))
            fail(dashed(*option) + " needs " + dashed(*option->needs));
        if (option->excludes != nullptr && is_given(option->excludes))
            fail(dashed(*option) + " excludes " + dashed(*option->excludes));
    }
    check_choice();
    if (!options_.section.empty()) check_section();
    if (std::ranges::count(options_.inputs, kStandardStream) > 1) fail("standard input can be read only once");
}

void Reader::check_choice() const {
    const OptionList choice = request_.command->choice;
    const Option* chosen = nullptr;
    for (const Option* each : choice) {
        if (!is_given(each)) continue;
        if (chosen != nullptr) fail(dashed(*each) + " excludes " + dashed(*chosen));
        chosen = each;
    }
    if (choice.empty() || chosen != nullptr) return;
    std::string names;
    for (const Option* each : choice) names += (names.empty() ? "" : " or ") + dashed(*each);
    fail(names + " is required");
}

// Names belong to the layout that is made.
void Reader::check_section() const {
    std::vector<std::string_view> names;
    const uint32_t list = options_.to_old ? K_TEXT_OLD_SECTIONS : K_TEXT_NEW_SECTIONS;
    for (const char* name; (name = k_text_section(list, names.size())) != nullptr;) names.emplace_back(name);
    if (std::ranges::find(names, options_.section) != names.end()) return;
    fail("\"" + options_.section + "\" is no section of the " + (options_.to_old ? "old" : "new") + " layout" +
         suggestion(options_.section, names));
}

// An input that may be left out is standard input.
void Reader::add_default_inputs() {
    for (const Operand& operand : request_.command->operands.subspan(operands_))
        if (operand.names == Names::kInput && !operand.is_required) options_.inputs.push_back(kStandardStream);
}

void Reader::fail_by_unknown_option() const {
    const std::string of_command = request_.command == nullptr ? "" : std::string(" of ") + request_.command->name;
    if (optopt >= kFirstOption && optarg == nullptr) fail(dashed(option_of(optopt)) + " takes no value");
    if (optopt != 0) fail(std::string("-") + static_cast<char>(optopt) + " is no option" + of_command);
    const std::string written = option_as_written();
    std::vector<std::string> options;
    for (const Option* each : list_) options.push_back(dashed(*each));
    fail(written + " is no option" + of_command + suggestion(written, {options.begin(), options.end()}));
}

}  // namespace

Request read_arguments(int argc, char** argv, Options& options) {
    return Reader(argc, argv, options).read();
}

void fail_by_usage(const std::string& message, const Command* command) {
    const std::string page = command == nullptr ? "kcnvrt --help" : std::string("kcnvrt help ") + command->name;
    throw Failure{kWrongUsage, "kcnvrt", "usage", message + " (" + page + " tells more)"};
}

void fail_by_unknown_command(const std::string& name) {
    std::vector<std::string_view> names;
    for (const Command& command : all_commands()) names.emplace_back(command.name);
    fail_by_usage("\"" + name + "\" is no command" + suggestion(name, names), nullptr);
}

}  // namespace kcnvrt
