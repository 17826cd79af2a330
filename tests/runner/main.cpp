// The case runner: `cases [PATH...]` runs every case of the *.json files at or below the paths (default: tests/cases);
// `cases --print [PATH...]` prints what each of them observes instead, to be compared with another machine.
//
// A file is an array of cases, and a case is an object:
//
//   "case"      a sentence that says what is expected, unique in its file
//   "call"      the exported function that is called; a new function needs no change here when it is a section handler
//   "output"    what is returned, or what the destination holds afterwards; null also stands for a null pointer
//   "ordered"   true: the members of the output are compared in their order too
//   "result"    the int that is returned, default 0
//   "messages"  the error record as [function, text] pairs in order, default []
//   "pointers"  where each message belongs, as a JSON Pointer into the source (null for nowhere); not looked at when it
//               is left out
//   "stdout"    the text written to standard output, default ""
//
// and the arguments, by the kind of function. A tree that is left out is a null pointer, null is JSON null:
//
//   a section handler: any name not below             "source", "destination" (default {})
//   json_*_set_safe, json_string_set_password*        "key", "value", "destination", "function" (default "caller")
//   json_string_set_def                               the same and "default"
//   k_cnvrt_to_old                                    "source", "flags" (default 0)                      no "result"
//   k_cnvrt_to_new                                    "source", "base", "flags"                          no "result"
//   k_cnvrt_get_section_to_old                        "name", "source"                                   no "result"
//   k_cnvrt_get_section_to_new                        "name", "source", "base", "flags"                  no "result"
//   json_section_parser                               "name", "source", "destination", "is_array", "handler"
//   json_services_parser                              "name", "source", "destination", "kind", "handler"
//   getMaxKey, getNumberOfEntries                     "source"                                           no "output"
//   getSortedKeys                                     "source"; the result is the count
//   json_set_max_instance                             "destination", "count"                             no "result"
//   multiinstanse_to_string                           "key", "list", "destination"
//   k_cnvrt_get_remote_from_old_element               "source", "errors" (default 0); the result is their count then
//   k_conf_find_branch                                "source", "path"                                   no "result"
//   k_conf_diff_set2                                  "base", "candidate", "flag" (default 0)            no "result"
//   k_conf_apply                                      "base", "difference"                               no "result"
//
// Any other member is an error, so that a misspelt expectation cannot pass unseen. Of every case it is also checked
// that the inputs are unchanged, that the output survives the release of the inputs, that nothing of Jansson's leaks,
// that a second call does the same, and that a call with a null error record has the same output; that every message
// has a place which is in the source, and that a result is withheld, or a failure counted, exactly when a message
// counts.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "allocations.h"
#include "case.h"
#include "check.h"
#include "print.h"

namespace {

class CaseTest : public testing::Test {
public:
    explicit CaseTest(std::shared_ptr<const Case> tested) : tested_{std::move(tested)} {}
    void TestBody() override { check(*tested_); }

private:
    std::shared_ptr<const Case> tested_;
};

void register_case(Case&& loaded) {
    const auto tested = std::make_shared<const Case>(std::move(loaded));
    testing::RegisterTest(tested->suite.c_str(), tested->test.c_str(), nullptr, nullptr, tested->file.c_str(),
                          tested->line, [tested]() -> testing::Test* { return new CaseTest{tested}; });
}

// The number of files, so that a folder without cases does not pass as one whose cases all hold.
size_t register_cases(const std::string& path) {
    const auto files = case_files(path);
    for (const auto& file : files) {
        for (Case& loaded : load_cases(file)) register_case(std::move(loaded));
    }
    return files.size();
}

// As register_cases.
size_t print_cases(const std::string& path) {
    const auto files = case_files(path);
    for (const auto& file : files) {
        for (const Case& loaded : load_cases(file)) print_outcome(loaded);
    }
    return files.size();
}

}  // namespace

int main(int argc, char** argv) {
    count_allocations();
    testing::InitGoogleTest(&argc, argv);
    std::vector<std::string> paths{argv + 1, argv + argc};
    const bool prints = !paths.empty() && paths.front() == "--print";
    if (prints) paths.erase(paths.begin());
    if (paths.empty()) paths.push_back(KCNVRT_CASES);
    for (const std::string& path : paths) {
        if ((prints ? print_cases(path) : register_cases(path)) > 0) continue;
        std::fprintf(stderr, "%s: no case files\n", path.c_str());
        return 2;
    }
    return prints ? 0 : RUN_ALL_TESTS();
}
