// Where messages belong: pairs while a source lives, JSON Pointers afterwards.
#include <string>
#include <vector>

#include "support_json.h"

namespace {

using namespace support_test;

class Places : public testing::Test {
protected:
    void report(const char* text = "text") { k_err_set(err.get(), "f", 0, "%s", text); }
    void place(const json_t* object, const char* name) {
        k_err_place(err.get(), object, name, name == nullptr ? 0 : std::string{name}.size());
    }
    void locate(size_t first = 0) { k_err_locate(err.get(), first, root.get()); }
    json_t* at(const char* path) { return k_conf_find_branch(root.get(), path, 0); }
    std::string pointer(size_t index) {
        const char* text = k_err_pointer(err.get(), index);
        return text == nullptr ? "(null)" : text;
    }
    std::vector<std::string> pointers() {
        std::vector<std::string> all;
        for (size_t i = 0; i < k_err_count(err.get()); ++i) all.push_back(pointer(i));
        return all;
    }

    Errors err{k_err_new()};
    Json root =
        parse(R"({"a": {"b": [{"c": 1}, {"c": 2}], "": {"": 1}}, "x/y": {"~": {"~/~1": 1}}, "é": {}, "n": null})");
};

using Texts = std::vector<std::string>;

TEST_F(Places, AreMembersOfObjectsAndElementsOfArrays) {
    report();
    place(json_array_get(at("a.b"), 1), "c");
    report();
    place(at("a.b"), "0");
    report();
    place(at("a"), "not there");
    report();
    place(root.get(), "n");
    EXPECT_EQ(pointers(), (Texts{"(null)", "(null)", "(null)", "(null)"}));
    locate();
    EXPECT_EQ(pointers(), (Texts{"/a/b/1/c", "/a/b/0", "/a", "/n"}));
}

TEST_F(Places, OfWhatIsMissingAreTheContainersThatLackIt) {
    report();
    place(at("a"), "not there");
    for (const char* index : {"2", "-1", "00", "x", ""}) {
        report();
        place(at("a.b"), index);
    }
    locate();
    EXPECT_EQ(pointers(), (Texts{"/a", "/a/b", "/a/b", "/a/b", "/a/b", "/a/b"}));
}

TEST_F(Places, AreObjectsAndArraysThemselves) {
    for (json_t* container : {root.get(), at("a"), at("a.b"), at("é")}) {
        report();
        place(container, nullptr);
    }
    locate();
    EXPECT_EQ(pointers(), (Texts{"", "/a", "/a/b", "/é"}));
}

TEST_F(Places, EscapeNames) {
    report();
    place(json_object_get(json_object_get(root.get(), "x/y"), "~"), "~/~1");
    report();
    place(json_object_get(at("a"), ""), "");
    locate();
    EXPECT_EQ(pointers(), (Texts{"/x~1y/~0/~0~1~01", "/a//"}));
}

TEST_F(Places, AreGivenFromTheInsideOutAndKept) {
    report();
    place(at("a.b"), "0");
    report();
    report();
    place(at("a"), "b");
    place(root.get(), "a");
    locate();
    EXPECT_EQ(pointers(), (Texts{"/a/b/0", "/a/b", "/a/b"}));
}

TEST_F(Places, OfAValueWithoutMembersAreLeftToTheOutside) {
    report();
    place(at("n"), "c");
    place(nullptr, "c");
    place(root.get(), "n");
    locate();
    EXPECT_EQ(pointers(), Texts{"/n"});
}

TEST_F(Places, CanBeTakenBack) {
    report();
    place(at("a"), "b");
    report();
    const Json inner = parse("{}");
    place(inner.get(), "z");
    report();
    k_err_place_from(err.get(), 1, root.get(), "n", 1);
    report();
    place(at("a"), nullptr);
    locate();
    EXPECT_EQ(pointers(), (Texts{"/a/b", "/n", "/n", "/a"}));
}

TEST_F(Places, TakenBackForAValueWithoutMembersAreLeftToTheOutside) {
    const Json inner = parse("{}");
    report();
    place(inner.get(), "z");
    k_err_place_from(err.get(), 0, at("n"), "z", 1);
    place(root.get(), "n");
    locate();
    EXPECT_EQ(pointers(), Texts{"/n"});
}

TEST_F(Places, ThatNobodyGaveAreTheWholeSource) {
    report();
    locate();
    EXPECT_EQ(pointers(), Texts{""});
    for (const char* leaf : {"null", "1", "\"text\"", "[]"}) {
        k_err_clear(err.get());
        root = parse(leaf);
        report();
        report();
        locate();
        EXPECT_EQ(pointers(), (Texts{"", ""})) << leaf;
    }
}

TEST_F(Places, OutsideTheRootAreNowhere) {
    const Json other = parse("{}");
    report();
    place(other.get(), "a");
    locate();
    EXPECT_EQ(pointers(), Texts{"(null)"});
}

TEST_F(Places, AreNoneInANullRoot) {
    report();
    place(root.get(), "a");
    report();
    k_err_locate(err.get(), 0, nullptr);
    place(root.get(), "a");
    locate();
    EXPECT_EQ(pointers(), (Texts{"(null)", "(null)"}));
}

TEST_F(Places, BelongToTheCallThatReported) {
    report("before");
    report();
    place(root.get(), "a");
    locate(1);
    report();
    place(root.get(), "n");
    locate(2);
    EXPECT_EQ(pointers(), (Texts{"(null)", "/a", "/n"}));
    locate(3);
    locate(100);
    locate(0);
    EXPECT_EQ(pointers(), (Texts{"(null)", "/a", "/n"}));
}

TEST_F(Places, OutliveTheSource) {
    report();
    json_object_set_new(at("a"), "name", json_null());
    char name[] = "name";
    place(at("a"), name);
    name[0] = '?';
    locate();
    root.reset();
    EXPECT_EQ(pointers(), Texts{"/a/name"});
    EXPECT_EQ(k_err_pointer(err.get(), 0), k_err_pointer(err.get(), 0));
}

TEST_F(Places, AreForgottenWithTheirMessages) {
    report();
    place(at("a"), "b");
    locate();
    EXPECT_EQ(pointers(), Texts{"/a/b"});
    k_err_clear(err.get());
    EXPECT_EQ(pointer(0), "(null)");
    report();
    EXPECT_EQ(pointer(0), "(null)");
    place(root.get(), "n");
    locate();
    EXPECT_EQ(pointers(), Texts{"/n"});
}

TEST_F(Places, EndBeforeANameThatNoTextHolds) {
    const auto name_with_nul = [](json_t* object, json_t* value) { json_object_setn_new(object, "x\0y", 3, value); };
    name_with_nul(at("a"), json_object());
    json_t* const inside = json_object_getn(at("a"), "x\0y", 3);
    report();
    place(inside, "c");
    report();
    k_err_place(err.get(), at("a"), "\0", 1);
    report();
    place(at("a.b"), nullptr);
    locate();
    EXPECT_EQ(pointers(), (Texts{"/a", "/a", "/a/b"}));
}

// A container in two places has one of its own, and is walked through once: forty levels of it would otherwise be more
// than anyone can walk.
TEST_F(Places, OfSharedContainersCostNoMoreThanTheyAre) {
    json_t* const innermost = json_pack("{s:n}", "c");
    Json tree{innermost};
    for (int level = 0; level < 40; ++level) {
        json_t* const pair = json_array();
        json_array_append(pair, tree.get());
        json_array_append_new(pair, tree.release());
        tree.reset(pair);
    }
    root = std::move(tree);
    const Json elsewhere = parse("{}");
    report();
    place(innermost, "c");
    report();
    place(elsewhere.get(), "c");
    locate();
    std::string first;
    for (int level = 0; level < 40; ++level) first += "/0";
    EXPECT_EQ(pointers(), (Texts{first + "/c", "(null)"}));
}

TEST_F(Places, MayBeNestedToAnyDepth) {
    constexpr size_t kLevels = 20000;
    root = nested(kLevels);
    json_t* innermost = root.get();
    while (json_array_size(innermost) > 0) innermost = json_array_get(innermost, 0);
    json_array_append_new(innermost, json_null());
    report();
    place(innermost, "0");
    locate();
    EXPECT_EQ(pointer(0).size(), 2 * kLevels);
    // Jansson itself takes them apart one inside another.
}

TEST_F(Places, AreFoundAmongThousands) {
    root.reset(json_array());
    for (int i = 0; i < 5000; ++i) json_array_append_new(root.get(), json_pack("{s:{s:n}}", "in", "x"));
    for (size_t i = 0; i < 5000; ++i) {
        report();
        place(json_object_get(json_array_get(root.get(), i), "in"), "x");
    }
    locate();
    for (size_t i = 0; i < 5000; ++i) EXPECT_EQ(pointer(i), "/" + std::to_string(i) + "/in/x");
}

TEST(NullErrorRecord, HasNoPlaces) {
    const Json root = parse("{}");
    k_err_place(nullptr, root.get(), "a", 1);
    k_err_place_from(nullptr, 0, root.get(), "a", 1);
    k_err_locate(nullptr, 0, root.get());
    EXPECT_EQ(k_err_pointer(nullptr, 0), nullptr);
}

}  // namespace
