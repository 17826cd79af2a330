// Instance numbers as names.
#include <gtest/gtest.h>

#include <string>

#include "k_tr.h"

namespace {

TEST(Instance, IsANumberFromOneWithoutLeadingZeros) {
    for (const char* key : {"1", "9", "12", "10", "2147483647", "99999999999999999999999999"}) {
        EXPECT_EQ(k_tr_str_is_instance(key), 1) << key;
    }
    EXPECT_EQ(k_tr_str_is_instance(std::string(100000, '7').c_str()), 1);
}

TEST(Instance, IsNothingElse) {
    for (const char* key :
         {"", "0", "01", "00", "1a", "a1", " 1", "1 ", "+1", "-1", "1.0", "1.", "max_instance", "\xd9\xa1"}) {
        EXPECT_EQ(k_tr_str_is_instance(key), 0) << key;
    }
    EXPECT_EQ(k_tr_str_is_instance(nullptr), 0);
}

}  // namespace
