// Places of many devices that count as one.
#include "census/place_pattern.h"

#include <gtest/gtest.h>

namespace kcnvrt {

TEST(PlacePattern, NumbersAndNamesOfEntriesAreLeftOut) {
    EXPECT_EQ("", place_pattern(""));
    EXPECT_EQ("/route/*/ip", place_pattern("/route/12/ip"));
    EXPECT_EQ("/ifaces/*/services/*/tunnels/*/mtu", place_pattern("/ifaces/eth4/services/ppp0/tunnels/l2tp/mtu"));
    EXPECT_EQ("/Device/Users/list/*/pass", place_pattern("/Device/Users/list/admin/pass"));
    EXPECT_EQ("/Device/Ifaces/ethernet/*/services/ppp/*/auth",
              place_pattern("/Device/Ifaces/ethernet/1/services/ppp/2/auth"));
    EXPECT_EQ("/groups/*", place_pattern("/groups/a~1b"));
}

TEST(PlacePattern, NamesOfMembersStay) {
    EXPECT_EQ("/users/listing/admin", place_pattern("/users/listing/admin"));
    EXPECT_EQ("/wifi/5G_Channel", place_pattern("/wifi/5G_Channel"));
    EXPECT_EQ("/a//b/", place_pattern("/a//b/"));
}

}  // namespace kcnvrt
