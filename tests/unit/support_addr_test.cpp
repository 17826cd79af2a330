// Addresses, masks and prefixes.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "k_addr.h"

namespace {

const char* shown(const char* text) {
    return text == nullptr ? "null" : text;
}

TEST(V4Address, IsWhatInetPtonReads) {
    for (const char* text : {"0.0.0.0", "192.168.0.1", "255.255.255.255", "1.2.3.4"}) {
        EXPECT_EQ(k_addr_v4_is_correct(text), 1) << text;
    }
    for (const char* text :
         {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "01.2.3.4", "1.2.3.4 ", " 1.2.3.4", "1.2.3.4/24", "a.b.c.d", "1..2.3",
          "1.2.3.", "0x1.2.3.4", "::1", "-1.2.3.4", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(k_addr_v4_is_correct(text), 0) << shown(text);
    }
}

TEST(V6Prefix, IsAnAddressAndALength) {
    for (const char* text :
         {"::/0", "2001:db8::/32", "fe80::1/64", "::1/128", "2001:db8::/064", "::/00", "::/000",
          "2001:db8:1:2:3:4:5:6/9", "::ffff:255.255.255.255/96", "0000:0000:0000:0000:0000:ffff:255.255.255.255/128"}) {
        EXPECT_EQ(k_addr_is_ippfx_correct(10, text), 1) << text;
    }
    for (const char* text : {"",
                             "/",
                             "/64",
                             "::",
                             "::/",
                             "::/129",
                             "::/999",
                             "::/1280",
                             "::/0064",
                             "::/-1",
                             "::/+1",
                             "::/ 1",
                             "::/1 ",
                             "::/6a",
                             "::/64/64",
                             "g::/64",
                             "1::2::3/64",
                             "fe80::1%eth0/64",
                             " ::/64",
                             "192.168.0.0/24",
                             "[::]/64",
                             "0000:0000:0000:0000:0000:ffff:255.255.255.2550/64",
                             static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(k_addr_is_ippfx_correct(10, text), 0) << shown(text);
    }
    EXPECT_EQ(k_addr_is_ippfx_correct(10, (std::string(100000, '1') + "/64").c_str()), 0);
}

TEST(V4Prefix, HasAtMost32Bits) {
    EXPECT_EQ(k_addr_is_ippfx_correct(AF_INET, "10.0.0.0/8"), 1);
    EXPECT_EQ(k_addr_is_ippfx_correct(AF_INET, "10.0.0.0/0"), 1);
    EXPECT_EQ(k_addr_is_ippfx_correct(AF_INET, "10.0.0.1/32"), 1);
    EXPECT_EQ(k_addr_is_ippfx_correct(AF_INET, "10.0.0.1/33"), 0);
    EXPECT_EQ(k_addr_is_ippfx_correct(AF_INET, "::/32"), 0);
}

TEST(Prefix, OfAnotherFamilyIsNotCorrect) {
    for (const int family : {0, -1, AF_UNIX, 1000}) EXPECT_EQ(k_addr_is_ippfx_correct(family, "::/64"), 0) << family;
}

TEST(Mask, AndPrefixAreTwoFormsOfOneThing) {
    for (int prefix = 0; prefix <= 32; ++prefix) {
        char mask[32] = "";
        ASSERT_EQ(k_addr_v4_prefix_to_mask(prefix, mask, sizeof mask), 0) << prefix;
        EXPECT_EQ(k_addr_v4_mask_to_prefix(mask), prefix) << mask;
    }
}

TEST(Mask, OfAPrefix) {
    struct Row {
        int prefix;
        const char* mask;
    };
    for (const Row& row : {Row{0, "0.0.0.0"},
                           {1, "128.0.0.0"},
                           {8, "255.0.0.0"},
                           {24, "255.255.255.0"},
                           {31, "255.255.255.254"},
                           {32, "255.255.255.255"}}) {
        char mask[16] = "";
        EXPECT_EQ(k_addr_v4_prefix_to_mask(row.prefix, mask, sizeof mask), 0);
        EXPECT_STREQ(mask, row.mask);
    }
}

TEST(Mask, ThatIsNotContiguousOrNoAddressHasNoPrefix) {
    for (const char* text : {"255.0.255.0", "0.0.0.1", "0.255.255.255", "255.255.255.253", "", "255.255.255", "24",
                             "255.255.255.0 ", "ffff::", static_cast<const char*>(nullptr)}) {
        EXPECT_LT(k_addr_v4_mask_to_prefix(text), 0) << shown(text);
    }
}

TEST(Mask, IsNotWrittenOnFailure) {
    struct Row {
        int prefix;
        size_t size;
    };
    for (const Row& row : {Row{-1, 16}, {33, 16}, {1000000, 16}, {24, 13}, {24, 0}, {0, 7}, {32, 15}}) {
        char buffer[16] = "untouched";
        EXPECT_NE(k_addr_v4_prefix_to_mask(row.prefix, buffer, row.size), 0) << row.prefix << " " << row.size;
        EXPECT_STREQ(buffer, "untouched");
    }
    EXPECT_NE(k_addr_v4_prefix_to_mask(24, nullptr, 16), 0);
}

TEST(Mask, NeedsNoMoreRoomThanItsText) {
    char buffer[14];
    EXPECT_EQ(k_addr_v4_prefix_to_mask(24, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "255.255.255.0");
}

}  // namespace
