// Generated pairs of documents: whatever changed, the difference carries it, and carries nothing else.
#include <random>
#include <vector>

#include "support_json.h"

namespace {

using namespace support_test;

constexpr unsigned kSeeds = 4000;

struct Letters {
    bool nulls;
};

// Documents with odd names and odd values, the same for the same seed on every machine.
class Generator {
public:
    Generator(unsigned seed, Letters letters) : random_{seed}, letters_{letters} {}

    size_t below(size_t count) { return random_() % count; }

    json_t* leaf() {
        switch (below(letters_.nulls ? 12 : 11)) {
            case 0:
                return json_true();
            case 1:
                return json_false();
            case 2:
            case 3:
                return json_integer(static_cast<json_int_t>(below(4)));
            case 4:
                return json_real(static_cast<double>(below(4)));
            case 5:
                return json_real(-0.0);
            case 6:
                return json_integer(INT64_MAX - static_cast<json_int_t>(below(2)));
            case 7:
                return json_stringn("nul\0in", 6 - below(3));
            case 8:
                return json_string("");
            case 11:
                return json_null();
            default:
                return json_string(name());
        }
    }

    json_t* value(unsigned levels) {
        const size_t kind = levels == 0 ? 0 : below(5);
        if (kind < 2) return leaf();
        json_t* container = kind < 4 ? json_object() : json_array();
        for (size_t i = below(6); i > 0; --i) insert(container, value(levels - 1));
        return container;
    }

    json_t* object(unsigned levels) {
        json_t* made = json_object();
        for (size_t i = below(8); i > 0; --i) insert(made, value(levels - 1));
        return made;
    }

    // One change somewhere below `container`.
    void mutate(json_t* container) {
        const size_t size = size_of(container);
        const size_t at = size == 0 ? 0 : below(size);
        json_t* inside = size == 0 ? nullptr : at_index(container, at);
        if (size_of(inside) > 0 && below(4) > 0) return mutate(inside);
        switch (size == 0 ? 0 : below(4)) {
            case 0:
                return insert(container, value(2));
            case 1:
                return remove(container, at);
            case 2:
                return set(container, at, leaf());
            default:
                return set(container, at, value(2));
        }
    }

    static size_t size_of(json_t* value) {
        return json_is_object(value) ? json_object_size(value) : json_array_size(value);
    }

    static void* iterator_at(json_t* object, size_t at) {
        void* found = json_object_iter(object);
        for (; at > 0; --at) found = json_object_iter_next(object, found);
        return found;
    }
    static json_t* at_index(json_t* container, size_t at) {
        return json_is_array(container) ? json_array_get(container, at)
                                        : json_object_iter_value(iterator_at(container, at));
    }
    static void set(json_t* container, size_t at, json_t* value) {
        if (json_is_array(container)) {
            json_array_set_new(container, at, value);
        } else {
            json_object_iter_set_new(container, iterator_at(container, at), value);
        }
    }
    static void remove(json_t* container, size_t at) {
        if (json_is_array(container)) {
            json_array_remove(container, at);
        } else {
            json_object_del(container, json_object_iter_key(iterator_at(container, at)));
        }
    }

private:
    const char* name() {
        static const char* const kNames[] = {"a", "b", "c", "",   "/", "~",    "~0",       "~1", "a/b", "m~n",
                                             "0", "1", "-", "01", " ", "\"\\", "\xc3\xa9", "%",  "a.b", "max_instance"};
        return kNames[below(std::size(kNames))];
    }
    void insert(json_t* container, json_t* value) {
        if (json_is_array(container)) {
            json_array_insert_new(container, below(json_array_size(container) + 1), value);
        } else {
            json_object_set_new(container, name(), value);
        }
    }

    std::mt19937 random_;
    Letters letters_;
};

struct Pair {
    Json base;
    Json candidate;
};

// A document and what a few changes made of it; now and then two that have nothing to do with each other.
Pair make_pair(unsigned seed, Letters letters) {
    Generator generate{seed, letters};
    Json base{generate.object(5)};
    if (generate.below(10) == 0) return {std::move(base), Json{generate.object(5)}};
    Json candidate{json_deep_copy(base.get())};
    for (size_t i = generate.below(5); i > 0; --i) generate.mutate(candidate.get());
    return {std::move(base), std::move(candidate)};
}

void expect_round_trip(unsigned seed, unsigned flag, Letters letters) {
    const auto [base, candidate] = make_pair(seed, letters);
    const std::string base_text = dump(base);
    const std::string candidate_text = dump(candidate);
    const Errors err{k_err_new()};
    const Json difference = diff(base, candidate, flag, err.get());
    const Json result = applied(base, difference, err.get());
    ASSERT_EQ(dump(result), candidate_text) << "seed " << seed << "\nbase " << base_text << "\n" << dump(difference);
    ASSERT_EQ(dump(base), base_text) << "seed " << seed;
    ASSERT_EQ(dump(candidate), candidate_text) << "seed " << seed;
    ASSERT_EQ(k_err_count(err.get()), 0u);
    ASSERT_EQ(json_object_size(difference.get()) + json_array_size(difference.get()) == 0, base_text == candidate_text);
}

TEST(GeneratedPairs, JsonPatchCarriesEveryChange) {
    for (unsigned seed = 0; seed < kSeeds && !HasFatalFailure(); ++seed) {
        expect_round_trip(seed, K_CONF_JSON_PATCH, {.nulls = true});
    }
}

TEST(GeneratedPairs, MergePatchCarriesEveryChange) {
    for (unsigned seed = 0; seed < kSeeds && !HasFatalFailure(); ++seed) {
        expect_round_trip(seed, K_CONF_MERGE_PATCH, {.nulls = false});
    }
}

void strip_nulls(json_t* object) {
    const char* name;
    json_t* value;
    void* next;
    json_object_foreach_safe(object, next, name, value) {
        if (json_is_null(value)) {
            json_object_del(object, name);
        } else {
            strip_nulls(value);
        }
    }
}

TEST(GeneratedPairs, MergePatchLosesNothingButNullMembers) {
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        const auto [base, candidate] = make_pair(seed, {.nulls = true});
        Json result{json_deep_copy(applied(base, diff(base, candidate, K_CONF_MERGE_PATCH)).get())};
        Json expected{json_deep_copy(candidate.get())};
        strip_nulls(result.get());
        strip_nulls(expected.get());
        ASSERT_EQ(dump(result), dump(expected)) << "seed " << seed << "\nbase " << dump(base);
    }
}

TEST(GeneratedPairs, ADocumentDoesNotDifferFromItsCopy) {
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        const Json base = make_pair(seed, {.nulls = true}).base;
        const Json copy{json_deep_copy(base.get())};
        ASSERT_EQ(dump(diff(base, base, K_CONF_JSON_PATCH)), "[]");
        ASSERT_EQ(dump(diff(base, copy, K_CONF_JSON_PATCH)), "[]");
        ASSERT_EQ(dump(diff(base, base, K_CONF_MERGE_PATCH)), "{}");
        ASSERT_EQ(dump(diff(base, copy, K_CONF_MERGE_PATCH)), "{}");
    }
}

// Any place in a document at which a leaf, or an element of an array, can be changed.
struct Place {
    json_t* container;
    size_t at;
};

void collect(json_t* value, std::vector<Place>& leaves, std::vector<Place>& elements) {
    for (size_t i = 0; i < Generator::size_of(value); ++i) {
        json_t* inside = Generator::at_index(value, i);
        if (json_is_array(value)) elements.push_back({value, i});
        if (!json_is_object(inside) && !json_is_array(inside)) leaves.push_back({value, i});
        collect(inside, leaves, elements);
    }
}

TEST(GeneratedPairs, OneChangeIsOneOperation) {
    size_t leaves_changed = 0;
    size_t elements_changed = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) {
        Generator generate{seed, {.nulls = true}};
        const Json base{generate.object(5)};
        const Json candidate{json_deep_copy(base.get())};
        std::vector<Place> leaves;
        std::vector<Place> elements;
        collect(candidate.get(), leaves, elements);
        const char* expected = "";
        if (seed % 3 == 0 && !leaves.empty()) {
            const Place place = leaves[generate.below(leaves.size())];
            Generator::set(place.container, place.at, json_string("changed"));
            expected = "replace";
            ++leaves_changed;
        } else if (!elements.empty()) {
            const Place place = elements[generate.below(elements.size())];
            const bool inserted = seed % 3 == 1;
            if (inserted) json_array_insert_new(place.container, place.at, json_string("inserted"));
            if (!inserted) json_array_remove(place.container, place.at);
            expected = inserted ? "add" : "remove";
            ++elements_changed;
        } else {
            continue;
        }
        const Json difference = diff(base, candidate, K_CONF_JSON_PATCH);
        ASSERT_EQ(json_array_size(difference.get()), 1u) << dump(base) << "\n" << dump(difference);
        ASSERT_STREQ(json_string_value(json_object_get(json_array_get(difference.get(), 0), "op")), expected);
    }
    EXPECT_GT(leaves_changed, kSeeds / 4);
    EXPECT_GT(elements_changed, kSeeds / 4);
}

}  // namespace
