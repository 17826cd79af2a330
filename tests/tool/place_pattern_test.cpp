// Places of many devices that count as one.
#include "census/place_pattern.h"

#include <gtest/gtest.h>

#include "layouts/layouts.h"
#include "layouts/places.h"

namespace kcnvrt {

namespace {

// With a number for each entry, which a device may also give as a name.
std::string with_entries(const std::string& place) {
    Steps steps = steps_of(place);
    for (std::string& step : steps)
        if (step == "*") step = "7";
    return place_of(steps);
}

}  // namespace

TEST(PlacePattern, NumbersAndNamesOfEntriesAreLeftOut) {
    EXPECT_EQ("", place_pattern(""));
    EXPECT_EQ("/route/*/ip", place_pattern("/route/12/ip"));
    EXPECT_EQ("/ifaces/*/services/*/tunnels/*/mtu", place_pattern("/ifaces/eth4/services/ppp0/tunnels/l2tp/mtu"));
    EXPECT_EQ("/users/list/*/pass", place_pattern("/users/list/admin/pass"));
    EXPECT_EQ("/Device/Ifaces/ethernet/*/services/ppp/*/auth",
              place_pattern("/Device/Ifaces/ethernet/1/services/ppp/2/auth"));
    EXPECT_EQ("/groups/*", place_pattern("/groups/a~1b"));
    EXPECT_EQ("/vlan/vlans/*/ports/*", place_pattern("/vlan/vlans/1/ports/lan1"));
    EXPECT_EQ("/Links/*/state", place_pattern("/Links/ppp0/state"));
    EXPECT_EQ("/rip/*", place_pattern("/rip/br0"));
}

TEST(PlacePattern, UnknownMembersOfEntriesKeepTheirNames) {
    EXPECT_EQ("/ifaces/*/unknown", place_pattern("/ifaces/eth0/unknown"));
    EXPECT_EQ("/ifaces/*/unknown/*/eth0", place_pattern("/ifaces/eth0/unknown/17/eth0"));
    EXPECT_EQ("/unknown/eth0", place_pattern("/unknown/eth0"));
}

TEST(PlacePattern, EachPlaceOfTheDescriptionIsItsOwn) {
    const Layouts layouts;
    std::size_t places = 0;
    for (const Layout layout : {Layout::kOld, Layout::kNew})
        for (const LayoutLine& line : layouts.lines())
            for (const std::string& place : plain_places(line.places(layout))) {
                EXPECT_EQ(place, place_pattern(place));
                EXPECT_EQ(place, place_pattern(with_entries(place)));
                ++places;
            }
    EXPECT_GT(places, 1000U);
}

TEST(PlacePattern, NamesOfMembersStay) {
    EXPECT_EQ("/Device/Ifaces/ethernet/max_instance", place_pattern("/Device/Ifaces/ethernet/max_instance"));
    EXPECT_EQ("/users/listing/admin", place_pattern("/users/listing/admin"));
    EXPECT_EQ("/wifi/5G_Channel", place_pattern("/wifi/5G_Channel"));
    EXPECT_EQ("/a//b/", place_pattern("/a//b/"));
}

}  // namespace kcnvrt
