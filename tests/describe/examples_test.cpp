// What is described is in the examples that are shipped.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "described.h"

using namespace describe;

namespace {

// Names and types that stand in one step, one by one.
std::vector<std::string> each_place(const std::string& place) {
    std::vector<std::string> places{""};
    for (const std::string& step : describe::names_of(place)) {
        const bool is_type = step.front() == '[';
        std::stringstream names{is_type ? step.substr(1, step.size() - 2) : step};
        std::vector<std::string> longer;
        for (std::string name; std::getline(names, name, '|');)
            for (const std::string& before : places)
                longer.push_back(before + "/" + (is_type ? "[" + name + "]" : name));
        places = std::move(longer);
    }
    return places;
}

// What is described is in the examples that are shipped: of places that share a line, at least one.
TEST(Examples, AreComplete) {
    const Tree layouts = load_layouts();
    std::vector<std::pair<Side, Tree>> shipped;
    for (const auto& [name, side] :
         {std::pair{"home-gateway.old.json", Side::kOld}, std::pair{"home-gateway.new.json", Side::kNew},
          std::pair{"dsl-gateway.old.json", Side::kOld}, std::pair{"dsl-gateway.new.json", Side::kNew}})
        shipped.emplace_back(side, json_load_file((std::string{KCNVRT_EXAMPLES "/"} + name).c_str(), 0, nullptr));
    const auto is_shipped = [&](Side side, std::string place) {
        if (place.ends_with("/**")) place.resize(place.size() - 3);
        return std::any_of(shipped.begin(), shipped.end(), [&](const auto& example) {
            return example.first == side && !matches(example.second.get(), place).empty();
        });
    };
    size_t index;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), index, line) {
        for (const auto& [direction, side] : {std::pair{"to_new", Side::kOld}, std::pair{"to_old", Side::kNew}}) {
            json_t* const places = json_object_get(line, name_of(side));
            if (json_object_get(line, direction) == nullptr) continue;
            bool is_there = false;
            size_t number;
            json_t* place;
            json_array_foreach(places, number,
                               place) for (const std::string& one : each_place(json_string_value(place))) is_there =
                is_there || is_shipped(side, one);
            EXPECT_TRUE(is_there) << text_of(places);
        }
    }
}

}  // namespace
