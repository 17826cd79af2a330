// Values that are very deep, very long or very many.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>

#include "hostile.h"
#include "k_conf.h"
#include "sampling.h"

namespace {

// Jansson's parser accepts this many containers inside one another.
constexpr int kDeepest = 2048;

Tree nested(int levels, bool of_arrays) {
    Tree tree{json_integer(1)};
    for (int level = 0; level < levels; ++level) {
        Tree outer{of_arrays ? json_array() : json_object()};
        if (of_arrays)
            json_array_append_new(outer.get(), tree.release());
        else
            json_object_set_new(outer.get(), "1", tree.release());
        tree = std::move(outer);
    }
    return tree;
}

// Places that differ by more than a number.
void for_each_kind_of_place(const std::function<bool(const json_t*)>& is_meant,
                            const std::function<void(Part& part, const Place& place)>& visit) {
    std::set<std::string> visited;
    for_each_place(1, [&](Part& part, const Place& place) {
        if (!is_meant(place.value.get())) return;
        const bool is_new =
            visited.insert(pattern_of(place.path) + (part.direction == Direction::kToOld ? "<" : ">")).second;
        if (is_new && visited.size() % stride(1) == 0) visit(part, place);
    });
}

TEST(HostileSizes, NestingToTheParsersLimit) {
    const Tree arrays = nested(kDeepest - 8, true);
    const Tree objects = nested(kDeepest - 8, false);
    size_t documents = 0;
    Worst worst{"a value nested to 2,048 levels", {.documents = 1200, .kib = 300}};
    for_each_kind_of_place([](const json_t*) { return true; },
                           [&](Part& part, const Place& place) {
                               if (documents++ % (is_thorough() ? 1 : 5) != 0) return;
                               worst.add(convert_with(part, place, arrays.get(), "nested arrays"));
                               worst.add(convert_with(part, place, objects.get(), "nested objects"));
                           });
}

TEST(HostileSizes, DifferencesAtTheParsersLimit) {
    const Tree base = nested(kDeepest, false);
    const Tree other = nested(kDeepest - 1, false);
    for (const unsigned flag : {K_CONF_JSON_PATCH, K_CONF_MERGE_PATCH}) {
        const Tree difference{k_conf_diff_set2(base.get(), other.get(), 0, flag, nullptr)};
        ASSERT_NE(nullptr, difference);
        const Tree applied{k_conf_apply(base.get(), difference.get(), nullptr)};
        EXPECT_TRUE(json_equal(other.get(), applied.get()));
    }
    k_err_t* err = k_err_new();
    const Tree deeper = nested(kDeepest + 1, false);
    EXPECT_EQ(nullptr, k_conf_diff_set2(deeper.get(), other.get(), 0, K_CONF_JSON_PATCH, err));
    EXPECT_EQ(1u, k_err_count(err));
    k_err_free(err);
}

std::string repeated(std::string_view piece, size_t size) {
    std::string text;
    while (text.size() < size) text += piece;
    return text;
}

TEST(HostileSizes, TextsOfSixteenMegabytes) {
    constexpr size_t kSize = size_t{16} << 20;
    const std::string letters(kSize, 'A');
    const std::string digits(kSize, '1');
    Worst worst{"a text of 16 MB", {.documents = 180, .kib = 60000}};
    const Tree texts[] = {Tree{json_stringn(letters.data(), kSize)}, Tree{json_stringn(digits.data(), kSize)}};
    size_t count = 0;
    for_each_kind_of_place([](const json_t* value) { return json_is_string(value); },
                           [&](Part& part, const Place& place) {
                               if (count++ % (is_thorough() ? 1 : 7) == 0)
                                   worst.add(convert_with(part, place, texts[count % 2].get(), "a long text"));
                           });
}

// Texts that are cut into pieces.
TEST(HostileSizes, TextsOfManyPieces) {
    Worst worst{"a text of 128 KiB in as many pieces as it can have", {.documents = 2300, .kib = 15000}};
    for (const char* piece : {"a,", "a|", ",", "|", "Ports:1,2;WiFi:1,2;", "192.0.2.1-", "1:", "[[", "{\"a\":"}) {
        const std::string pieces = repeated(piece, 1 << 17);
        const Tree text{json_stringn(pieces.data(), pieces.size())};
        size_t count = 0;
        for_each_kind_of_place([](const json_t* value) { return json_is_string(value); },
                               [&](Part& part, const Place& place) {
                                   if (count++ % (is_thorough() ? 1 : 5) == 0)
                                       worst.add(convert_with(part, place, text.get(), "a text of many pieces"));
                               });
    }
}

// The leaves of a container's first entry, or the entry itself where it is a leaf: what tells entries apart is kept,
// and a hundred thousand of them stay small.
Tree small_entry(json_t* container) {
    json_t* first =
        json_is_array(container) ? json_array_get(container, 0) : json_object_iter_value(json_object_iter(container));
    if (first != nullptr && is_leaf(first)) return Tree{json_deep_copy(first)};
    Tree small{json_object()};
    const char* name;
    json_t* value;
    json_object_foreach(first, name, value) {
        if (is_leaf(value) && json_object_size(small.get()) < 4)
            json_object_set_new(small.get(), name, json_deep_copy(value));
    }
    return small;
}

// As many members or elements more.
Tree with_many(json_t* container, size_t many) {
    Tree large{json_copy(container)};
    const Tree entry = small_entry(container);
    for (size_t i = 1; i <= many; ++i) {
        if (json_is_array(container))
            json_array_append(large.get(), entry.get());
        else if (json_object_get(container, std::to_string(i).c_str()) == nullptr)
            json_object_set(large.get(), std::to_string(i).c_str(), entry.get());
    }
    return large;
}

// Every section gets them, and every list and object inside when thorough, else each of these as many as time allows.
TEST(HostileSizes, AHundredThousandMembers) {
    constexpr size_t kMany = 100000;
    Worst of_sections{"a section with 100,000 members more", {.documents = 130, .kib = 120000}};
    Worst of_lists = is_thorough()
                         ? Worst{"a list or object with 100,000 members more", {.documents = 500, .kib = 300000}}
                         : Worst{"a list or object with 2,000 members more", {.documents = 500, .kib = 7500}};
    for_each_kind_of_place([](const json_t* value) { return !is_leaf(value); },
                           [&](Part& part, const Place& place) {
                               const bool is_section = place.path == part.name;
                               const Tree large = with_many(place.value.get(), kMany / stride(is_section ? 1 : 50));
                               const Conduct conduct = convert_with(part, place, large.get(), "many members");
                               (is_section ? of_sections : of_lists).add(conduct);
                           });
}

}  // namespace

int main(int argc, char** argv) {
    count_blocks();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
