// The laws choose every code: each name of a table of names and numbers is among the values that documents are made
// with.
#include <gtest/gtest.h>

#include <set>

#include "code_tables.h"
#include "rows.h"

namespace {

TEST(CodeValues, AreChosenByTheLaws) {
    std::set<std::string> chosen;
    for (const Row& row : load_rows(KCNVRT_LAWS "/values.json"))
        for (size_t at = 0; at < json_array_size(row["values"]); ++at) {
            const char* const value = json_string_value(json_array_get(row["values"], at));
            if (value != nullptr) chosen.insert(value);
        }
    const std::vector<Code> codes = codes_of_tables();
    EXPECT_GT(codes.size(), 30u);
    for (const Code& code : codes)
        EXPECT_TRUE(chosen.contains(code.name))
            << "no value of tests/laws/values.json is " << code.name << ": " << code.table;
}

}  // namespace
