#include "document/sections.h"

#include <set>
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

// Walks a table by the exported names, and counts what it saw.
size_t expect_distinct_names(k_cnvrt_table_t table) {
    std::set<std::string> names;
    size_t index = 0;
    for (; k_cnvrt_section_name(table, index) != nullptr; ++index)
        EXPECT_TRUE(names.insert(k_cnvrt_section_name(table, index)).second) << index;
    EXPECT_EQ(k_cnvrt_section_name(table, index + 1), nullptr);
    EXPECT_EQ(k_cnvrt_section_name(table, SIZE_MAX), nullptr);
    return index;
}

TEST(SectionNames, AreThoseOfTheTablesInTheirOrder) {
    EXPECT_GT(expect_distinct_names(K_CNVRT_OLD_SECTIONS), 0u);
    EXPECT_GT(expect_distinct_names(K_CNVRT_NEW_SECTIONS), 0u);
    for (size_t i = 0; !old_config_handler_table[i].name.is_empty(); ++i)
        EXPECT_STREQ(k_cnvrt_section_name(K_CNVRT_OLD_SECTIONS, i), old_config_handler_table[i].name.text());
    for (size_t i = 0; !new_config_handler_table[i].name.is_empty(); ++i)
        EXPECT_STREQ(k_cnvrt_section_name(K_CNVRT_NEW_SECTIONS, i), new_config_handler_table[i].name.text());
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

}  // namespace
}  // namespace kcnvrt
