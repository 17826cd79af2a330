// What a difference costs: how often elements of arrays are looked at, and how much memory is asked for. Ten times the
// document costs about ten times as much, where a walk too many would cost a hundred times.
//
// The linker's --wrap leads the look-ups here.
#include <cstdlib>
#include <string>

#include "support_json.h"

namespace {
size_t looked_up = 0;
}

extern "C" {
json_t* __real_json_array_get(const json_t* array, size_t index);
json_t* __wrap_json_array_get(const json_t* array, size_t index);
}

json_t* __wrap_json_array_get(const json_t* array, size_t index) {
    ++looked_up;
    return __real_json_array_get(array, index);
}

namespace {

using namespace support_test;

constexpr size_t kFew = 100;
constexpr size_t kMany = 1000;

void expect_linear(size_t few, size_t many) {
    EXPECT_GT(few, kFew) << "nothing was counted";
    EXPECT_LT(many, few * 12);
}

enum class Lengths { kEqual, kDifferent };

// Arrays inside one another, equal but for their ends, which have to be lined up on every level if they differ in
// length.
size_t lookups_in_arrays(Lengths lengths, size_t levels) {
    Json base = parse("[1]");
    Json candidate = parse("[2]");
    for (size_t i = 0; i < levels; ++i) {
        base.reset(lengths == Lengths::kEqual ? json_pack("[oi]", base.release(), 5)
                                              : json_pack("[o]", base.release()));
        candidate.reset(json_pack("[oi]", candidate.release(), 5));
    }
    looked_up = 0;
    const Json difference = diff(base, candidate, K_CONF_JSON_PATCH);
    const size_t lookups = looked_up;
    EXPECT_TRUE(json_equal(applied(base, difference).get(), candidate.get()));
    return lookups;
}

TEST(Effort, OfComparingArraysInsideArraysIsLinear) {
    for (const Lengths lengths : {Lengths::kEqual, Lengths::kDifferent}) {
        expect_linear(lookups_in_arrays(lengths, kFew), lookups_in_arrays(lengths, kMany));
    }
}

// A test of the value at a path against an array of `count` nulls, which fails.
size_t lookups_of_failing_test(const Json& base, const char* path, size_t count) {
    const Json nulls{json_array()};
    for (size_t i = 0; i < count; ++i) json_array_append_new(nulls.get(), json_null());
    const Json test{json_pack("[{s:s,s:s,s:O}]", "op", "test", "path", path, "value", nulls.get())};
    looked_up = 0;
    EXPECT_EQ(applied(base, test), nullptr);
    return looked_up;
}

// One array is the front of the other: their lengths alone tell them apart, as if there were nothing to compare.
TEST(Effort, OfTellingArraysOfDifferentLengthsApartIsNone) {
    const Json base{json_pack("{s:o}", "there", json_array())};
    for (size_t i = 0; i < kMany; ++i) json_array_append_new(json_object_get(base.get(), "there"), json_null());
    EXPECT_EQ(lookups_of_failing_test(base, "/there", kMany + 1), lookups_of_failing_test(base, "/nowhere", kMany + 1));
    EXPECT_EQ(lookups_of_failing_test(base, "/there", kMany - 1), lookups_of_failing_test(base, "/nowhere", kMany - 1));
}

// What Jansson allocates.
size_t bytes_asked_for = 0;

void* counting_malloc(size_t size) {
    bytes_asked_for += size;
    return malloc(size);
}

size_t bytes_of_applying(const Json& base, const Json& patch) {
    bytes_asked_for = 0;
    json_set_alloc_funcs(counting_malloc, free);
    const Json result = applied(base, patch);
    json_set_alloc_funcs(malloc, free);
    EXPECT_NE(result, nullptr);
    return bytes_asked_for;
}

// An operation on each member of a container, which stands at `place` in the document: "/inside", or "" for all of it.
size_t bytes_of_operations(json_t* container, const std::string& place, size_t count) {
    const Json base{place.empty() ? container : json_pack("{s:o}", "inside", container)};
    const Json patch{json_array()};
    for (size_t i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        json_object_set_new(container, name.c_str(), json_integer(1));
        json_array_append_new(container, json_integer(1));
        json_array_append_new(
            patch.get(), json_pack("{s:s,s:s,s:i}", "op", "replace", "path", (place + "/" + name).c_str(), "value", 2));
    }
    return bytes_of_applying(base, patch);
}

// What an operation has copied to change it is not copied again by the next.
TEST(Effort, OfManyChangesInOneContainerIsLinear) {
    for (const char* const place : {"", "/inside"}) {
        expect_linear(bytes_of_operations(json_object(), place, kFew),
                      bytes_of_operations(json_object(), place, kMany));
        expect_linear(bytes_of_operations(json_array(), place, kFew), bytes_of_operations(json_array(), place, kMany));
    }
}

}  // namespace
