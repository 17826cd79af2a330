// A code that has a row has cases: of every table of names and numbers, each name becomes its number, and each number
// its name, in a case of the table's room. And it is described in text/layouts.json.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "call.h"
#include "case.h"
#include "code_tables.h"

namespace {

// The leaves of a tree, as texts.
void add_leaves(std::set<std::string>& leaves, json_t* tree) {
    if (tree == nullptr) return;
    const char* name;
    json_t* member;
    json_object_foreach(tree, name, member) add_leaves(leaves, member);
    for (size_t at = 0; at < json_array_size(tree); ++at) add_leaves(leaves, json_array_get(tree, at));
    if (!json_is_object(tree) && !json_is_array(tree)) leaves.insert(text_of(tree));
}

struct Conversion {
    std::set<std::string> source;
    std::set<std::string> output;
};

// By the folder of the cases.
std::map<std::string, std::vector<Conversion>> conversions_of_cases() {
    std::map<std::string, std::vector<Conversion>> conversions;
    for (const auto& file : case_files(KCNVRT_CASES)) {
        const std::string folder = std::filesystem::path{file}.parent_path().filename().string();
        for (const Case& tested : load_cases(file)) {
            Conversion conversion;
            add_leaves(conversion.source, json_object_get(tested.data.get(), "source"));
            add_leaves(conversion.output, json_object_get(tested.data.get(), "output"));
            conversions[folder].push_back(std::move(conversion));
        }
    }
    return conversions;
}

using Texts = std::vector<std::string>;

// How the code stands in a document: as itself, in decimal, or as a boolean.
Texts forms_of(const std::string& number) {
    if (number == "true") return {"true", "1", "\"1\""};
    if (number == "false") return {"false", "0", "\"0\""};
    return {number, "\"" + number + "\""};
}

bool has_any(const std::set<std::string>& leaves, const Texts& forms) {
    return std::any_of(forms.begin(), forms.end(), [&](const std::string& form) { return leaves.contains(form); });
}

bool is_shown(const std::vector<Conversion>& conversions, const Texts& from, const Texts& into) {
    return std::any_of(conversions.begin(), conversions.end(), [&](const Conversion& conversion) {
        return has_any(conversion.source, from) && has_any(conversion.output, into);
    });
}

// The values that are said to be taken somewhere.
std::set<std::string> described_values() {
    const Tree layouts{json_load_file(KCNVRT_ROOT "/text/layouts.json", 0, nullptr)};
    std::set<std::string> described;
    size_t number;
    json_t* behaviour;
    json_array_foreach(json_object_get(layouts.get(), "behaviours"), number, behaviour) {
        size_t at;
        json_t* said;
        json_array_foreach(behaviour, at, said)
            add_leaves(described, json_object_get(json_object_get(said, "takes"), "values"));
    }
    return described;
}

TEST(CodeCases, AreDescribed) {
    const std::set<std::string> described = described_values();
    for (const Code& code : codes_of_tables())
        EXPECT_TRUE(described.contains("\"" + code.name + "\""))
            << "text/layouts.json does not know " << code.name << ", " << code.table
            << ": scripts/layouts.sh writes it";
}

TEST(CodeCases, ShowEveryCodeBothWays) {
    const auto conversions = conversions_of_cases();
    const std::vector<Code> codes = codes_of_tables();
    EXPECT_GT(codes.size(), 30u);
    for (const Code& code : codes) {
        const auto& of_room = conversions.at(code.room);
        const Texts name{"\"" + code.name + "\""};
        const Texts number = forms_of(code.number);
        EXPECT_TRUE(is_shown(of_room, name, number))
            << "no case of " << code.room << " makes " << code.number << " of " << code.name << ": " << code.table;
        EXPECT_TRUE(is_shown(of_room, number, name))
            << "no case of " << code.room << " makes " << code.name << " of " << code.number << ": " << code.table;
    }
}

}  // namespace
