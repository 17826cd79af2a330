// The tables of sections: what makes one unsound, the lookup by name, and the names themselves; and the version.
#include "document/sections.h"

#include <string>

#include "frame_memory.h"
#include "frame_tree.h"
#include "k_cnvrt.h"
#include "k_str.h"

namespace kcnvrt {
namespace {

int never_called(json_t*, json_t*, k_err_t*) {
    return 1;
}

constexpr NewSection row(Name name) {
    return section(name, never_called);
}
constexpr NewSection row(Name name, uint32_t hash) {
    return {name, never_called, hash};
}
constexpr OldSection old_row(Name name, uint32_t hash) {
    return {name, never_called, Container::kArray, hash};
}

template <class Section>
void expect_check(const Section* table, const char* name, int result, const std::string& printed) {
    testing::internal::CaptureStdout();
    const int checked = check_hashes(table, name);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), printed);
    EXPECT_EQ(checked, result);
}

TEST(CheckHashes, ShippedTablesAreSoundAndNothingIsPrinted) {
    testing::internal::CaptureStdout();
    const int result = k_cnvrt_check_valid_hashes();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(result, 0);
}

TEST(CheckHashes, AnEmptyTableIsSound) {
    const NewSection table[] = {{}};
    expect_check(table, "table", 0, "");
}

TEST(CheckHashes, ASoundTableIsSound) {
    const NewSection table[] = {row("Ifaces"), row("ifaces"), row("Users"), {}};
    expect_check(table, "table", 0, "");
}

TEST(CheckHashes, AWrongHashIsAMissUnderTheNameOfItsTable) {
    const NewSection table[] = {row("Users"), row("Ifaces", 7), {}};
    expect_check(
        table, "new_config_handler_table", -1,
        "new_config_handler_table, name \"Ifaces\" hash miss! Hash in struct - 7, generated hash - 3113501040\n");
}

TEST(CheckHashes, AWrongHashOfTheOldTable) {
    const OldSection table[] = {old_row("ifaces", 4294967295u), {}};
    expect_check(table, "old_config_handler_table", -1,
                 "old_config_handler_table, name \"ifaces\" hash miss! Hash in struct - 4294967295, generated hash - "
                 "70866320\n");
}

TEST(CheckHashes, OnlyTheFirstMissIsPrinted) {
    const NewSection table[] = {row("Users", 1), row("Ifaces", 2), {}};
    expect_check(table, "t", -1, "t, name \"Users\" hash miss! Hash in struct - 1, generated hash - 239202135\n");
}

TEST(CheckHashes, ARepeatedNameIsADuplicate) {
    const NewSection table[] = {row("Users"), row("Ifaces"), row("Users"), {}};
    expect_check(table, "table", -1, "Duplicate hash found! Key - Users\n");
}

TEST(CheckHashes, ADuplicateIsFoundBeforeItsWrongHash) {
    const NewSection table[] = {row("Users"), row("Users", 5), {}};
    expect_check(table, "table", -1, "Duplicate hash found! Key - Users\n");
}

TEST(CheckHashes, AMissBeforeADuplicateIsPrinted) {
    const NewSection table[] = {row("Users", 5), row("Users"), {}};
    expect_check(table, "t", -1, "t, name \"Users\" hash miss! Hash in struct - 5, generated hash - 239202135\n");
}

TEST(CheckHashes, TwoNamesOfOneHashAreADuplicate) {
    ASSERT_EQ(k_str_get_hash("Aa"), k_str_get_hash("B@"));
    const NewSection table[] = {row("Aa"), row("B@"), {}};
    expect_check(table, "table", -1, "Duplicate hash found! Key - B@\n");
}

TEST(CheckHashes, ARowWithoutAHandlerIsCheckedToo) {
    const NewSection table[] = {{"Users", nullptr, 5}, {}};
    expect_check(table, "t", -1, "t, name \"Users\" hash miss! Hash in struct - 5, generated hash - 239202135\n");
}

TEST(CheckHashes, SaysWhenMemoryRanOut) {
    const NewSection table[] = {row("Users"), row("Ifaces"), {}};
    for (size_t allocations = 0; allocations < 2; ++allocations) {
        const OutOfMemory soon{allocations};
        expect_check(table, "table", -1, "Error reallocate!\n");
    }
}

TEST(FindSection, IsExact) {
    const NewSection table[] = {row("WiFi"), row("Vlan"), {}};
    EXPECT_EQ(find_section(table, "WiFi"), &table[0]);
    EXPECT_EQ(find_section(table, "Vlan"), &table[1]);
    for (const char* const name : {"wifi", "WIFI", "WiF", "WiFi ", "", "vlan"})
        EXPECT_EQ(find_section(table, name), nullptr);
}

TEST(FindSection, ComparesNamesOfOneHash) {
    const NewSection table[] = {row("Aa"), row("B@"), {}};
    EXPECT_EQ(find_section(table, "B@"), &table[1]);
    EXPECT_EQ(find_section(table, "Aa"), &table[0]);
}

TEST(FindSection, NeedsTheRightHash) {
    const NewSection table[] = {row("WiFi", 1), {}};
    EXPECT_EQ(find_section(table, "WiFi"), nullptr);
}

TEST(FindSection, PassesOverARowWithoutAHandler) {
    const NewSection table[] = {{"WiFi", nullptr, hash_of("WiFi")}, row("WiFi"), row("WiFi"), {}};
    EXPECT_EQ(find_section(table, "WiFi"), &table[1]);
}

TEST(HashOf, IsTheHashOfTheRunTime) {
    for (const char* const name : {"", "ifaces", "Ifaces", "Users", "\xff\x80"})
        EXPECT_EQ(hash_of(name), k_str_get_hash(name));
    static_assert(hash_of("Users") == 239202135);
}

// All names of a table, as the exported function gives them.
std::string names_of(k_cnvrt_table_t table) {
    std::string names;
    size_t index = 0;
    for (; const char* const name = k_cnvrt_section_name(table, index); ++index) names += std::string{name} + " ";
    EXPECT_EQ(k_cnvrt_section_name(table, index + 1), nullptr);
    EXPECT_EQ(k_cnvrt_section_name(table, SIZE_MAX), nullptr);
    return names;
}

// The services come last, in the order of their names; "sysusers" has a place of its own in each table.
TEST(SectionNames, AreInTheirOrder) {
    EXPECT_EQ(names_of(K_CNVRT_OLD_SECTIONS),
              "ifaces netfilter phys_ifaces vlan dsl_vlan wifi httpaccess users sysusers wan_pvid route rip "
              "queuemanagement voip adsl ports_config port_bandwidth Firewall Firewall_v6 default_ssid "
              "autoupdate ddns dhcp_opt_rule dlna dmz dns dru_filtering ftpd gpon_settings httpd igmp ipfilter ipsec "
              "macfilter ntpclient printserver redirect samba ssh syslog telnet tr069 transmission upnp urlfilter "
              "vserver wan_failover watchdog yandex ");
    EXPECT_EQ(
        names_of(K_CNVRT_NEW_SECTIONS),
        "Ifaces NetFilter phys_ifaces sysusers Vlan DSL_Vlan WiFi RemoteAccess Users wan_pvid Static rip QoS Voip "
        "Adsl Port_settings Port_bandwidth Firewall Firewall_v6 Default_ssid "
        "autoupdate ddns dhcp_opt_rule dlna dmz dns dns6 dru_filtering ftpd gpon_settings httpd igmp ipfilter "
        "ipsec macfilter ntpclient printserver redirect samba ssh syslog telnet tr069 transmission upnp urlfilter "
        "vserver wan_failover watchdog yandex ");
}

TEST(SectionNames, AreThoseOfTheTables) {
    std::string rows;
    for (const OldSection* row = old_config_handler_table; !row->name.is_empty(); ++row)
        rows += std::string{row->name.text()} + " ";
    EXPECT_EQ(names_of(K_CNVRT_OLD_SECTIONS), rows);
    rows = "";
    for (const NewSection* row = new_config_handler_table; !row->name.is_empty(); ++row)
        rows += std::string{row->name.text()} + " ";
    EXPECT_EQ(names_of(K_CNVRT_NEW_SECTIONS), rows);
}

TEST(Section, WithoutANameIsNotFound) {
    const Json section = object();
    const Messages messages;
    EXPECT_EQ(k_cnvrt_get_section_to_old(nullptr, section.get(), messages), nullptr);
    EXPECT_EQ(k_cnvrt_get_section_to_new(nullptr, section.get(), nullptr, 0, messages), nullptr);
    EXPECT_EQ(k_cnvrt_get_section_to_old(nullptr, nullptr, messages), nullptr);
    EXPECT_EQ(messages.list(), (Messages::List{{"k_cnvrt_get_section_to_old", "Section \"\" in old config not found"},
                                               {"k_cnvrt_get_section_to_new", "Section \"\" in new config not found"},
                                               {"k_cnvrt_get_section_to_old", "In object  is null!"}}));
}

// Without a message, as any container that is not theirs.
TEST(Users, NeedAContainer) {
    const Messages messages;
    EXPECT_EQ(k_cnvrt_get_users_from_new(tree("{'version': 0}").get(), nullptr, messages), 1);
    EXPECT_EQ(messages.list(), Messages::List{});
}

TEST(RemoteElement, NeedsNoCountOfErrors) {
    const Json rule = tree("{'dport': 'x'}");
    const Messages messages;
    const Json converted{k_cnvrt_get_remote_from_old_element(rule.get(), nullptr, messages)};
    EXPECT_EQ(text(converted), "{}");
    EXPECT_EQ(messages.list().size(), 1u);
}

TEST(SectionNames, AreAllKnownToTheConversion) {
    for (size_t i = 0; const char* const name = k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, i); ++i)
        EXPECT_NE(find_section(old_config_handler_table, name), nullptr) << name;
    for (size_t i = 0; const char* const name = k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, i); ++i)
        EXPECT_NE(find_section(new_config_handler_table, name), nullptr) << name;
}

TEST(Version, IsThatOfTheHeaders) {
    EXPECT_STREQ(k_cnvrt_version(), K_CNVRT_VERSION);
}

}  // namespace
}  // namespace kcnvrt
