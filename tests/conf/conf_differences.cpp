// conf_differences.cpp: makes and applies differences for a check written in another language.
//
// One JSON object a line on standard input, one a line on standard output:
//   {"base", "candidate", "flag"}  ->  {"difference", "applied"}, the difference applied to the base
//   {"base", "difference"}         ->  {"applied"}
// Where there is no result, the answer is {"error": the last message}.
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "k_conf.h"
#include "owners.h"

namespace {

constexpr size_t kFlags = JSON_DECODE_ANY | JSON_REJECT_DUPLICATES;

Tree difference_of(json_t* question, k_err_t* err) {
    json_t* given = json_object_get(question, "difference");
    if (given != nullptr) return Tree{json_incref(given)};
    const auto flag = static_cast<unsigned>(json_integer_value(json_object_get(question, "flag")));
    return Tree{
        k_conf_diff_set2(json_object_get(question, "base"), json_object_get(question, "candidate"), 0, flag, err)};
}

Tree answer(json_t* question) {
    const Errors err{k_err_new()};
    Tree difference = difference_of(question, err.get());
    Tree applied{k_conf_apply(json_object_get(question, "base"), difference.get(), err.get())};
    if (applied == nullptr) {
        const char* message = k_err_message(err.get(), k_err_count(err.get()) - 1);
        return Tree{json_pack("{s:s}", "error", message)};
    }
    return Tree{json_pack("{s:o,s:o}", "difference", difference.release(), "applied", applied.release())};
}

}  // namespace

int main() {
    std::string line;
    while (std::getline(std::cin, line)) {
        json_error_t error;
        const Tree question{json_loadb(line.data(), line.size(), kFlags, &error)};
        if (question == nullptr) {
            std::cerr << "column " << error.column << ": " << error.text << '\n';
            return EXIT_FAILURE;
        }
        if (json_dumpf(answer(question.get()).get(), stdout, JSON_COMPACT) != 0) return EXIT_FAILURE;
        std::putchar('\n');
    }
    return EXIT_SUCCESS;
}
