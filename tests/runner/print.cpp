// One line for each thing observed.
#include "print.h"

#include <cstdio>

#include "call.h"

namespace {

// On one line, whatever the text holds.
std::string quoted(const std::string& text) {
    const Tree string{json_stringn(text.data(), text.size())};
    return text_of(string.get());
}

}  // namespace

void print_outcome(const Case& tested) {
    std::printf("case %s.%s\n", tested.suite.c_str(), tested.test.c_str());
    for (const std::string& defect : tested.defects) std::printf("defect %s\n", quoted(defect).c_str());
    if (!tested.defects.empty()) return;

    const Outcome outcome = run_call(tested.data.get(), Record::kGiven);
    std::printf("result %d\noutput %s\n", outcome.result, outcome.output.c_str());
    for (size_t i = 0; i < outcome.messages.size(); ++i) {
        const auto& [function, message] = outcome.messages[i];
        std::printf("message %s %s at %s\n", quoted(function).c_str(), quoted(message).c_str(),
                    outcome.pointers[i].c_str());
    }
    if (!outcome.printed.empty()) std::printf("stdout %s\n", quoted(outcome.printed).c_str());
}
