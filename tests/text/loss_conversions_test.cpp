// How many conversions it takes to find losses, and that every member which nobody knows is one.
#include <gtest/gtest.h>
#include <k_cnvrt.h>

#include <algorithm>
#include <cstdio>

#include "losses_in_lines.h"
#include "sampling.h"
#include "scaled_example.h"

using kcnvrt::Json;
using kcnvrt::bench::Layout;
using kcnvrt::bench::scaled_example;

namespace {

size_t conversions = 0;

}  // namespace

// The linker leads the text layer's conversions here.
extern "C" {
json_t* __real_k_cnvrt_to_new(json_t* old_root, json_t* base, uint8_t flags, k_err_t* err);
json_t* __real_k_cnvrt_to_old(json_t* new_root, uint8_t flags, k_err_t* err);

json_t* __wrap_k_cnvrt_to_new(json_t* old_root, json_t* base, uint8_t flags, k_err_t* err) {
    ++conversions;
    return __real_k_cnvrt_to_new(old_root, base, flags, err);
}

json_t* __wrap_k_cnvrt_to_old(json_t* new_root, uint8_t flags, k_err_t* err) {
    ++conversions;
    return __real_k_cnvrt_to_old(new_root, flags, err);
}
}

namespace {

std::string text_of(const json_t* value) {
    char* const text = json_dumps(value, JSON_COMPACT | JSON_ENCODE_ANY);
    const std::string copy = text;
    std::free(text);
    return copy;
}

struct Example {
    const char* name;
    bool is_old;
    uint8_t flags;
};

void PrintTo(const Example& example, std::ostream* out) {
    *out << example.name;
}

uint32_t flags_of(const Example& example) {
    return (example.is_old ? K_TEXT_TOWARDS_NEW : K_TEXT_TOWARDS_OLD) |
           (example.flags != 0 ? static_cast<uint32_t>(K_TEXT_DSL_VLAN) : 0u);
}

Json loaded(const Example& example) {
    return Json{json_load_file((std::string(KCNVRT_EXAMPLES "/") + example.name).c_str(), 0, nullptr)};
}

Lines losses_of_tree(const Example& example, const json_t* tree) {
    return losses_of(ask_for_losses(flags_of(example), text_of(tree)));
}

size_t conversions_for(const Example& example, const json_t* tree) {
    conversions = 0;
    const Lines lines = losses_of_tree(example, tree);
    EXPECT_FALSE(lines.empty());
    return conversions;
}

class LossesOfExamples : public testing::TestWithParam<Example> {};

constexpr Example kExamples[] = {{"home-gateway.old.json", true, 0},
                                 {"home-gateway.new.json", false, 0},
                                 {"dsl-gateway.old.json", true, K_CNVRT_DSL_VLAN},
                                 {"dsl-gateway.new.json", false, K_CNVRT_DSL_VLAN}};

INSTANTIATE_TEST_SUITE_P(Each, LossesOfExamples, testing::ValuesIn(kExamples), [](const auto& tested) {
    std::string name = tested.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
});

TEST_P(LossesOfExamples, TakeFewConversionsAtAnySize) {
    const Json example = loaded(GetParam());
    for (const unsigned scale : {1u, 10u}) {
        const Layout layout = GetParam().is_old ? Layout::kOld : Layout::kNew;
        const Json scaled = scaled_example(example.get(), layout, scale);
        const size_t count = conversions_for(GetParam(), scaled.get());
        std::printf("%s, %u times: %zu conversions\n", GetParam().name, scale, count);
        EXPECT_LE(count, 100u);
    }
}

TEST_P(LossesOfExamples, TakeNoMoreForTenThousandUnknownMembersThanForTen) {
    const Json example = loaded(GetParam());
    const auto conversions_with = [&](int count) {
        const Json lossy{json_deep_copy(example.get())};
        for (int i = 0; i < count; ++i)
            json_object_set_new(lossy.get(), ("unknown" + std::to_string(i)).c_str(), json_pack("{s: i}", "a", i));
        return conversions_for(GetParam(), lossy.get());
    };
    const size_t with_ten = conversions_with(10);
    EXPECT_EQ(conversions_with(10000), with_ten);
}

// Every object of a tree, with its pointer.
struct Place {
    std::string pointer;
    json_t* object;
};

void collect(json_t* value, const std::string& pointer, std::vector<Place>& places) {
    if (json_is_object(value)) places.push_back({pointer, value});
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) collect(member, pointer + "/" + name, places);
    size_t index;
    json_array_foreach(value, index, member) collect(member, pointer + "/" + std::to_string(index), places);
}

constexpr const char* kUnknown = "NobodyKnows";

// What the conversion makes of a tree, and says.
std::string outcome_of(const Example& example, json_t* tree) {
    k_err_t* const err = k_err_new();
    k_err_keep_printed(err);
    const Json result{example.is_old ? k_cnvrt_to_new(tree, nullptr, example.flags, err)
                                     : k_cnvrt_to_old(tree, example.flags, err)};
    std::string outcome = result == nullptr ? "rejected" : text_of(result.get());
    for (size_t i = 0; i < k_err_count(err); ++i) outcome += std::string("\n") + k_err_message(err, i);
    k_err_free(err);
    return outcome;
}

// Whether the member, that is there, makes a difference to the conversion by being there or by what it says.
bool is_unused(const Example& example, json_t* tree, json_t* object, const std::string& without) {
    for (const char* const value : {R"("x")", "7", R"({"y": true})"}) {
        json_object_set_new(object, kUnknown, json_loads(value, JSON_DECODE_ANY, nullptr));
        if (outcome_of(example, tree) != without) return false;
    }
    return true;
}

// The kind and the place.
Lines places_of(const Lines& lines) {
    Lines places;
    for (const std::string& line : lines) places.push_back(line.substr(0, line.find(':')));
    std::sort(places.begin(), places.end());
    return places;
}

bool is_told_with_all_inside(const Lines& places, const std::string& pointer) {
    return std::any_of(places.begin(), places.end(), [&](const std::string& place) {
        return place.starts_with("dropped ") && (pointer + "/").starts_with(place.substr(8) + "/");
    });
}

// In some objects every name is known, since it is the user's to give.
TEST_P(LossesOfExamples, AreEveryMemberThatNobodyKnowsAndNothingElse) {
    const Json example = loaded(GetParam());
    const std::string without = outcome_of(GetParam(), example.get());
    const Lines usual = places_of(losses_of_tree(GetParam(), example.get()));
    std::vector<Place> places;
    collect(example.get(), "", places);
    size_t unknown = 0;
    const size_t step = stride(2);
    Lines all = usual;
    std::vector<Place> unused;
    for (size_t i = 0; i < places.size(); i += step) {
        auto& [pointer, object] = places[i];
        const bool is_loss = is_unused(GetParam(), example.get(), object, without);
        const Lines told = places_of(losses_of_tree(GetParam(), example.get()));
        const std::string line = "dropped " + pointer + "/" + kUnknown;
        if (is_loss && !is_told_with_all_inside(usual, pointer)) {
            Lines expected = usual;
            expected.insert(std::upper_bound(expected.begin(), expected.end(), line), line);
            EXPECT_EQ(told, expected) << pointer;
            all.push_back(line);
            unused.push_back(places[i]);
            ++unknown;
        } else if (!is_loss) {
            EXPECT_EQ(std::count(told.begin(), told.end(), line), 0) << pointer;
        }
        json_object_del(object, kUnknown);
    }
    EXPECT_GT(unknown, places.size() / step / 3) << "of " << places.size() / step;

    for (const Place& place : unused) json_object_set_new(place.object, kUnknown, json_true());
    std::sort(all.begin(), all.end());
    conversions = 0;
    EXPECT_EQ(places_of(losses_of_tree(GetParam(), example.get())), all);
    std::printf("%s: %zu unknown members in %zu objects, all together %zu conversions\n", GetParam().name, unknown,
                places.size(), conversions);
    EXPECT_LE(conversions, 100u);
}

}  // namespace
