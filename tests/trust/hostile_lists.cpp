// Numbered lists whose numbers are forged. A list is found by its "max_instance", or by its first entry.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>

#include "hostile.h"
#include "k_cnvrt.h"
#include "sampling.h"

namespace {

bool is_numbered_list(const json_t* value) {
    return json_object_get(value, "max_instance") != nullptr || json_object_get(value, "1") != nullptr;
}

// Each list of the examples once, the entries of one kind of list counting as one.
void for_each_list(const std::function<void(Part& part, const Place& list)>& visit) {
    std::set<std::string> visited;
    for_each_place(1, [&](Part& part, const Place& place) {
        if (!is_numbered_list(place.value.get())) return;
        const std::string pattern =
            pattern_of(place.path) + (part.direction == Direction::kToOld ? " to old" : " to new");
        if (visited.insert(pattern).second) visit(part, place);
    });
}

json_t* any_entry(json_t* list) {
    const char* name;
    json_t* entry;
    json_object_foreach(list, name, entry) {
        if (std::string{name} != "max_instance") return entry;
    }
    return nullptr;
}

// A list like that one, with one more entry under that name.
Tree with_entry(json_t* list, const std::string& name) {
    Tree forged{json_copy(list)};
    json_t* entry = any_entry(list);
    json_object_set_new(forged.get(), name.c_str(), entry == nullptr ? json_object() : json_deep_copy(entry));
    return forged;
}

// Memory follows the input: an entry with an enormous number costs no more than a few more entries.
TEST(HostileLists, EnormousNumbersCostNothing) {
    const std::string numbers[] = {
        "65536",      "2147483647",          "2147483648",          "4294967295",
        "4294967296", "9223372036854775807", "9223372036854775808", "99999999999999999999999999"};
    for (const std::string& number : numbers) {
        Worst worst{"a list with an entry numbered " + number, {.documents = 150, .kib = 80}};
        for_each_list([&](Part& part, const Place& list) {
            const long ordinary = expect_contract(part.direction, part.document.get(), part.name).blocks;
            const Tree forged = with_entry(list.value.get(), number);
            const Conduct conduct = worst.add(convert_with(part, list, forged.get(), number.c_str()));
            EXPECT_LE(conduct.blocks, 3 * ordinary + 200) << list.path << " with number " << number;
        });
    }
}

// Up to the bound each missing number may get a placeholder, and no more than that.
TEST(HostileLists, TheHighestNumberForPlaceholders) {
    size_t filled = 0;
    Worst worst{"a list with an entry numbered 65535", {.documents = 150, .kib = 30000}};
    for_each_list([&](Part& part, const Place& list) {
        const long ordinary = expect_contract(part.direction, part.document.get(), part.name).blocks;
        const Tree forged = with_entry(list.value.get(), std::to_string(K_CNVRT_MAX_INSTANCE));
        const long blocks = worst.add(convert_with(part, list, forged.get(), "65535")).blocks;
        EXPECT_LE(blocks, 3 * ordinary + 200 + 10 * K_CNVRT_MAX_INSTANCE) << list.path;
        filled += blocks > K_CNVRT_MAX_INSTANCE;
    });
    EXPECT_GT(filled, 0u);
}

TEST(HostileLists, NamesThatAreNoNumbers) {
    Worst worst{"a list with an entry whose name is no number", {.documents = 2100, .kib = 80}};
    const std::string names[] = {"0",  "00", "01", "-1",  "+1",  " 1",          "1 ",
                                 "1x", "x1", "",   "1.0", "0x1", "-2147483648", "max_instance"};
    for_each_list([&](Part& part, const Place& list) {
        for (const std::string& name : names) {
            const Tree forged = with_entry(list.value.get(), name);
            worst.add(convert_with(part, list, forged.get(), ("a list with \"" + name + "\"").c_str()));
        }
    });
}

TEST(HostileLists, ForgedCounts) {
    Worst worst{"a list with a forged count", {.documents = 900, .kib = 60}};
    for_each_list([&](Part& part, const Place& list) {
        const long ordinary = expect_contract(part.direction, part.document.get(), part.name).blocks;
        for (const json_int_t count : {json_int_t{-1}, json_int_t{0}, json_int_t{65536}, json_int_t{4294967295},
                                       json_int_t{INT64_MAX}, json_int_t{INT64_MIN}}) {
            const Tree forged{json_copy(list.value.get())};
            json_object_set_new(forged.get(), "max_instance", json_integer(count));
            const Conduct conduct = worst.add(convert_with(part, list, forged.get(), "a list with a forged count"));
            EXPECT_LE(conduct.blocks, 3 * ordinary + 200) << list.path << " with a count of " << count;
        }
    });
}

}  // namespace
