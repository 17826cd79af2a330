// The description as it stands in the repository.
#include "described.h"

#include <gtest/gtest.h>

#include <regex>

#include "k_cnvrt.h"
#include "pattern.h"

namespace describe {

namespace {

Names names_of(const Path& path) {
    Names names;
    for (const Step& step : path) names.push_back(step.name);
    return names;
}

}  // namespace

Tree load_layouts() {
    json_error_t error;
    Tree tree{json_load_file(KCNVRT_LAYOUTS, 0, &error)};
    EXPECT_NE(tree, nullptr) << error.text;
    return tree;
}

std::vector<Example> documents_of(json_t* layouts) {
    json_t* const examples = json_object_get(layouts, "examples");
    return {{Side::kOld, 0, json_array_get(examples, 0)},
            {Side::kNew, 0, json_array_get(examples, 1)},
            {Side::kOld, K_CNVRT_DSL_VLAN, json_array_get(examples, 2)},
            {Side::kNew, K_CNVRT_DSL_VLAN, json_array_get(examples, 3)}};
}

std::vector<Names> matches(json_t* root, const std::string& place) {
    const Pattern pattern{place.substr(1)};
    std::vector<Names> found;
    Path path;
    walk(root, path, [&](const Path& here, json_t*) {
        const bool is_entry = !here.empty() && here.back().name != "max_instance";
        if (is_entry && pattern.matches(here)) found.push_back(names_of(here));
    });
    return found;
}

bool is_listed(const std::string& message, json_t* list) {
    size_t index;
    json_t* entry;
    json_array_foreach(list, index, entry) {
        std::string text = std::regex_replace(json_string_value(entry), std::regex{R"([.*+?^${}()|[\]\\])"}, "\\$&");
        text = std::regex_replace(text, std::regex{"KEY|TEXT|TYPE|NAME|\\bN\\b"}, "[^]*");
        if (std::regex_match(message, std::regex{text})) return true;
    }
    return false;
}

}  // namespace describe
