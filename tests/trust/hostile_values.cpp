// One value of the examples at a time is replaced by another: of each type, and texts that no parser lets through.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "examples.h"
#include "hostile.h"
#include "sampling.h"

namespace {

struct Named {
    const char* name;
    Tree value;
};

std::vector<Named> of_each_type() {
    std::vector<Named> values;
    values.push_back({"an object", Tree{json_object()}});
    values.push_back({"an object with a member", Tree{json_pack("{s:i}", "1", 1)}});
    values.push_back({"an array", Tree{json_array()}});
    values.push_back({"an array with elements", Tree{json_pack("[o,o,s,{}]", json_null(), json_true(), "1")}});
    values.push_back({"an empty text", Tree{json_string("")}});
    values.push_back({"a text", Tree{json_string("text")}});
    values.push_back({"a text of digits", Tree{json_string("4294967295")}});
    values.push_back({"an integer", Tree{json_integer(2)}});
    values.push_back({"the highest integer", Tree{json_integer(INT64_MAX)}});
    values.push_back({"the lowest integer", Tree{json_integer(INT64_MIN)}});
    values.push_back({"a real", Tree{json_real(0.5)}});
    values.push_back({"true", Tree{json_true()}});
    values.push_back({"false", Tree{json_false()}});
    values.push_back({"null", Tree{json_null()}});
    return values;
}

// Texts that only a program can make, not a parser; and those that look like formats.
std::vector<Named> of_odd_texts() {
    constexpr char kNul[] = "Ports:1\0,2|3-4";
    std::vector<Named> values;
    values.push_back({"an embedded NUL", Tree{json_stringn_nocheck(kNul, sizeof kNul - 1)}});
    values.push_back({"a NUL", Tree{json_stringn_nocheck("", 1)}});
    values.push_back({"invalid UTF-8", Tree{json_string_nocheck("\xff\xfe\x80")}});
    values.push_back({"UTF-8 cut short", Tree{json_string_nocheck("WiFi:1,\xe2\x82")}});
    values.push_back({"base64 of no UTF-8", Tree{json_string("//79")}});
    values.push_back({"base64 of a NUL", Tree{json_string("AA==")}});
    values.push_back({"conversions of printf", Tree{json_string("%s%n%s%n%99999d")}});
    return values;
}

void replace_each_place_by(const std::vector<Named>& values, size_t step, Worst&& worst) {
    for_each_place(step, [&](Part& part, const Place& place) {
        for (const auto& [name, value] : values) worst.add(convert_with(part, place, value.get(), name));
    });
}

TEST(HostileValues, EveryMemberAsEachType) {
    replace_each_place_by(of_each_type(), stride(1),
                          Worst{"a member replaced by a value of each type", {.documents = 60000, .kib = 60}});
}

TEST(HostileValues, EveryMemberAsAnOddText) {
    replace_each_place_by(
        of_odd_texts(), stride(2),
        Worst{"a member replaced by a text that no parser lets through", {.documents = 15000, .kib = 60}});
}

// In the complete documents, where sections meet: the sections of the old layout, and of the new one with what they are
// in.
void replace_each_section(Direction direction, json_t* document, Worst& worst) {
    const std::vector<Named> values = of_each_type();
    for (const Place& place : places_in(document)) {
        const auto depth = std::ranges::count(place.path, '/');
        if (depth > (place.path.starts_with("Device/Services/") ? 2 : direction == Direction::kToOld ? 1 : 0)) continue;
        for (const auto& [name, value] : values) {
            const Replacement replacement{place, value.get()};
            worst.add(expect_contract(direction, document, place.path + " as " + name));
        }
    }
}

TEST(HostileValues, EverySectionAsEachType) {
    Worst worst{"a section of a complete document replaced by a value of each type", {.documents = 1800, .kib = 350}};
    replace_each_section(Direction::kToNew, old_example().get(), worst);
    replace_each_section(Direction::kToOld, new_example().get(), worst);
}

// A document that is no object at all.
TEST(HostileValues, TheDocumentAsEachType) {
    for (const auto& [name, value] : of_each_type())
        for (const Direction direction : {Direction::kToOld, Direction::kToNew})
            expect_contract(direction, value.get(), std::string{"a document as "} + name);
    expect_contract(Direction::kToOld, nullptr, "no document");
    expect_contract(Direction::kToNew, nullptr, "no document");
}

// A member with an odd name beside those that are there, in every object.
TEST(HostileValues, OddNamesInEveryObject) {
    Worst worst{"an object with a member of an odd name", {.documents = 5500, .kib = 60}};
    const Tree value{json_pack("{s:s}", "name", "value")};
    const std::string_view names[] = {{"", 0}, {"1\0", 2}, {"\0", 1}, {"\xff\xfe", 2}, {"%s%n", 4}, {"5G_", 3}};
    for_each_place(stride(1), [&](Part& part, const Place& place) {
        if (!json_is_object(place.value.get())) return;
        for (const std::string_view name : names) {
            if (json_object_getn(place.value.get(), name.data(), name.size()) != nullptr) continue;
            json_object_setn_nocheck(place.value.get(), name.data(), name.size(), value.get());
            worst.add(
                expect_contract(part.direction, part.document.get(), place.path + " with a member of an odd name"));
            json_object_deln(place.value.get(), name.data(), name.size());
        }
    });
}

}  // namespace
