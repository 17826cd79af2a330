// A field that has a row has cases: of every table that a case runs, each row is run with a value, in both directions.
#include <gtest/gtest.h>

#include "call.h"
#include "case.h"
#include "table_visits.h"

namespace {

TEST(CaseRows, AreRunWithAValue) {
    TableVisits visits;
    for (const auto& file : case_files(KCNVRT_CASES))
        for (const Case& tested : load_cases(file))
            if (tested.defects.empty()) run_call(tested.data.get(), Record::kGiven);
    for (const std::string& field : visits.unvisited()) ADD_FAILURE() << "no case has a value for " << field;
}

}  // namespace
