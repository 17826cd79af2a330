// The list of secrets against the description of the layouts: which of all names are masked. A name that comes new to a
// layout stands in secrets.json when it is masked, as a secret or as one that only looks like one.
#include <gtest/gtest.h>

#include <set>

#include "names.h"
#include "secrets.h"

using namespace describe;

namespace {

Tree load(const char* file) {
    Tree tree{json_load_file(file, 0, nullptr)};
    EXPECT_NE(tree, nullptr) << file;
    return tree;
}

using Set = std::set<std::string>;

Set strings_of(json_t* list) {
    Set strings;
    size_t index;
    json_t* text;
    json_array_foreach(list, index, text) strings.insert(json_string_value(text));
    return strings;
}

// The last names of a place; what is below a value that is carried whole has its own.
void add_last_names(const std::string& place, Set& names) {
    std::string last = place.ends_with("/**") ? place.substr(0, place.size() - 3) : place;
    last.erase(0, last.rfind('/') + 1);
    for (size_t at = 0; at <= last.size();) {
        const size_t end = std::min(last.find('|', at), last.size());
        names.insert(last.substr(at, end - at));
        at = end + 1;
    }
}

void add_members(json_t* value, Set& names) {
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) {
        names.insert(name);
        add_members(member, names);
    }
    for (size_t at = 0; at < json_array_size(value); ++at) add_members(json_array_get(value, at), names);
}

struct NamesOfLayouts {
    Set all;
    Set passwords;  // that are converted as such
};

NamesOfLayouts names_of_layouts() {
    const Tree layouts = load(KCNVRT_LAYOUTS);
    NamesOfLayouts names;
    size_t index;
    json_t* line;
    json_array_foreach(json_object_get(layouts.get(), "lines"), index, line) {
        const bool is_password = std::string{json_string_value(json_object_get(line, "kind"))} == "password";
        for (const char* layout : {"old", "new"})
            for (const std::string& place : strings_of(json_object_get(line, layout))) {
                add_last_names(place, names.all);
                if (is_password) add_last_names(place, names.passwords);
            }
    }
    add_members(json_object_get(layouts.get(), "examples"), names.all);
    return names;
}

TEST(Secrets, AreTheNamesOfTheLayoutsThatAreListed) {
    const NamesOfLayouts names = names_of_layouts();
    const Tree listed = load(KCNVRT_SECRETS);
    Set expected = strings_of(json_object_get(listed.get(), "secrets"));
    expected.merge(strings_of(json_object_get(listed.get(), "masked as well")));
    for (const std::string& name : names.passwords)
        EXPECT_TRUE(kcnvrt::text::is_secret_name(name)) << name << " is a password, and is shown";
    for (const std::string& name : names.all) {
        const bool is_expected = expected.contains(name) || names.passwords.contains(name);
        EXPECT_EQ(is_expected, kcnvrt::text::is_secret_name(name)) << name;
    }
    for (const std::string& name : expected) EXPECT_TRUE(names.all.contains(name)) << name << " is in no layout";
    EXPECT_GT(names.passwords.size(), 8u);
}

}  // namespace
