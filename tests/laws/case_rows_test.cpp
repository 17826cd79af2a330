// A field that has a row has cases: of every table that a case runs, each row is run with a value, in both directions.
// And it is described: text/layouts.json has a line of it.
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "call.h"
#include "case.h"
#include "table_visits.h"

namespace {

void run_cases() {
    for (const auto& file : case_files(KCNVRT_CASES))
        for (const Case& tested : load_cases(file))
            if (tested.defects.empty()) run_call(tested.data.get(), Record::kGiven);
}

TEST(CaseRows, AreRunWithAValue) {
    TableVisits visits;
    run_cases();
    for (const std::string& field : visits.unvisited()) ADD_FAILURE() << "no case has a value for " << field;
}

using Names = std::pair<std::string, std::string>;

// The old and the new name of each row that runs.
class RowNames : public Watcher {
public:
    std::set<Names> all;

    void see(const RowRun& run) override {
        all.insert({std::string{run.row.old_name.view()}, std::string{run.row.new_name.view()}});
    }
};

// The names in places such as /ifaces/[lte|atm]/services/*/mtu: as they stand, and as a row names them that are
// numbered.
std::set<std::string> names_in(json_t* places) {
    static const std::regex number{"[0-9]+"};
    std::set<std::string> names;
    for (size_t at = 0; at < json_array_size(places); ++at) {
        std::stringstream steps{json_string_value(json_array_get(places, at))};
        for (std::string step; std::getline(steps, step, '/');) {
            std::stringstream parts{step};
            for (std::string name; std::getline(parts, name, '|');) {
                names.insert(name);
                names.insert(std::regex_replace(name, number, "%d"));
            }
        }
    }
    return names;
}

std::set<Names> described_names() {
    const Tree layouts{json_load_file(KCNVRT_ROOT "/text/layouts.json", 0, nullptr)};
    std::set<Names> described;
    size_t at;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), at, line) {
        const std::set<std::string> new_names = names_in(json_object_get(line, "new"));
        for (const std::string& old_name : names_in(json_object_get(line, "old")))
            for (const std::string& new_name : new_names) described.insert({old_name, new_name});
    }
    return described;
}

TEST(CaseRows, AreDescribed) {
    RowNames rows;
    run_cases();
    const std::set<Names> described = described_names();
    EXPECT_GT(rows.all.size(), 100u);
    for (const auto& [old_name, new_name] : rows.all)
        EXPECT_TRUE(described.contains({old_name, new_name}))
            << "text/layouts.json has no line of " << old_name << " / " << new_name << ": scripts/layouts.sh writes it";
}

}  // namespace
