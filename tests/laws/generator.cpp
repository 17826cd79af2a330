// Every kind of value of an example, made anew by chance within what values.json says.
#include "generator.h"

#include <algorithm>
#include <cstdlib>

#include "k_str.h"
#include "numbered_list.h"

namespace {

std::string text_of_value(json_t* value) {
    return text_of(value);
}

// Two numbered lists end where the shorter one does.
void make_as_long(json_t* object, json_t* names) {
    json_t* first = json_object_get(object, json_string_value(json_array_get(names, 0)));
    json_t* second = json_object_get(object, json_string_value(json_array_get(names, 1)));
    const size_t length = std::min(json_object_size(first), json_object_size(second)) - 1;
    for (json_t* list : {first, second}) {
        for (size_t number = json_object_size(list) - 1; number > length; --number)
            json_object_del(list, std::to_string(number).c_str());
        json_object_set_new(list, "max_instance", json_integer(static_cast<json_int_t>(length)));
    }
}

}  // namespace

Tree Generator::like(json_t* example) {
    Place root;
    is_sparse_ = chance(10);
    return vary(root, example);
}

std::vector<std::string> Generator::unvisited() const {
    return visits_.missing_of(expected_);
}

const Row* Generator::row_of(const Place& place, std::initializer_list<const char*> says) {
    const auto [known, is_new] = rows_.try_emplace(place.field + ' ' + *says.begin(), nullptr);
    if (!is_new) return known->second;
    for (const Row& row : values_) {
        const bool is_meant =
            std::any_of(says.begin(), says.end(), [&row](const char* what) { return row.says(what); });
        if (known->second == nullptr && is_meant && row.is_of(side_) && row.matches(place.path, words_))
            known->second = &row;
    }
    return known->second;
}

json_t* Generator::said(const Place& place, const char* what) {
    const Row* row = row_of(place, {what});
    return row == nullptr ? nullptr : (*row)[what];
}

Tree Generator::inside(Place& place, const std::string& name, const std::string& counts_as, json_t* example) {
    const size_t length = place.field.size();
    place.path.push_back({name, example});
    place.field += (length == 0 ? "" : "/") + counts_as;
    Tree value = vary(place, example);
    place.path.pop_back();
    place.field.resize(length);
    return value;
}

Tree Generator::vary(Place& place, json_t* example) {
    if (said(place, "as it stands") != nullptr) return Tree{json_deep_copy(example)};
    if (json_is_array(example)) return vary_array(place, example);
    if (!json_is_object(example)) return vary_leaf(place, example);
    if (said(place, "keyed") != nullptr) return vary_keyed(place, example);
    return is_numbered_list(example) ? vary_list(place, example) : vary_object(place, example);
}

// None, one, some.
size_t Generator::length_of(const Place& place, size_t longest) {
    if (json_t* most = said(place, "longest")) longest = static_cast<size_t>(json_integer_value(most));
    const size_t length = said(place, "never empty") != nullptr ? 1 + below(longest) : below(longest + 1);
    expect(place, "one");
    if (longest > 1) expect(place, "some");
    if (said(place, "never empty") == nullptr) expect(place, "none");
    visit(place, length == 0 ? "none" : length == 1 ? "one" : "some");
    return length;
}

// As many entries as chance gives; or each of the example's as one of its own, where they differ in kind.
Tree Generator::vary_list(Place& place, json_t* example) {
    std::vector<json_t*> entries;
    for (void* at = json_object_iter(example); at != nullptr; at = json_object_iter_next(example, at))
        if (is_number(json_object_iter_key(at))) entries.push_back(json_object_iter_value(at));
    const bool is_fixed = said(place, "fixed") != nullptr;
    const size_t length = is_fixed          ? entries.size()
                          : entries.empty() ? 0
                                            : length_of(place, std::max<size_t>(3, entries.size()));
    Tree list = vary_members(place, example);
    for (size_t number = 1; number <= length; ++number) {
        const std::string name = std::to_string(number);
        const bool is_own = number <= entries.size() && (is_fixed || chance(70));
        json_t* entry = entries[is_own ? number - 1 : below(entries.size())];
        json_object_set_new(list.get(), name.c_str(), inside(place, name, is_fixed ? name : "*", entry).release());
    }
    if (json_object_get(example, "max_instance") != nullptr)
        json_object_set_new(list.get(), "max_instance", json_integer(static_cast<json_int_t>(length)));
    return list;
}

// Entries under their own names, and under others.
Tree Generator::vary_keyed(Place& place, json_t* example) {
    Tree object{json_object()};
    expect(place, "none");
    expect(place, "some");
    const bool is_empty = chance(5);
    for (void* at = json_object_iter(example); at != nullptr && !is_empty; at = json_object_iter_next(example, at)) {
        json_t* entry = json_object_iter_value(at);
        const char* type = json_string_value(json_object_get(entry, "type"));
        const std::string counts_as = type == nullptr ? "*" : std::string{"["} + type + "]";
        for (size_t copies = below(3); copies > 0; --copies) {
            const std::string name = json_object_iter_key(at) + (copies == 1 ? "" : word());
            json_object_set_new(object.get(), name.c_str(), inside(place, name, counts_as, entry).release());
        }
    }
    visit(place, json_object_size(object.get()) == 0 ? "none" : "some");
    return object;
}

Tree Generator::vary_object(Place& place, json_t* example) {
    Tree object = vary_members(place, example);
    if (json_t* twins = said(place, "twins")) make_as_long(object.get(), twins);
    if (json_t* choices = said(place, "one of")) {
        const size_t choice = below(json_array_size(choices));
        for (size_t i = 0; i < json_array_size(choices); ++i) expect(place, "choice " + std::to_string(i));
        visit(place, "choice " + std::to_string(choice));
        json_object_update(object.get(), json_array_get(choices, choice));
    }
    return object;
}

// The members that are no entries of a list, each there or not; now and then none that need not be.
Tree Generator::vary_members(Place& place, json_t* example) {
    Tree object{json_object()};
    const bool is_bare = chance(10);
    const bool is_list = is_numbered_list(example);
    for (void* at = json_object_iter(example); at != nullptr; at = json_object_iter_next(example, at)) {
        const std::string name = json_object_iter_key(at);
        if (is_list && (is_number(name) || name == "max_instance")) continue;
        Place member{place.path, place.field + (place.field.empty() ? "" : "/") + (is_number(name) ? "*" : name)};
        member.path.push_back({name, json_object_iter_value(at)});
        if (said(member, "left out") != nullptr) continue;
        const bool is_required = said(member, "required") != nullptr;
        expect(member, "present");
        if (!is_required) expect(member, "absent");
        const bool is_present = is_required || (!is_bare && chance(is_sparse_ ? 20 : 80));
        visit(member, is_present ? "present" : "absent");
        if (is_present)
            json_object_set_new(object.get(), name.c_str(), vary(member, json_object_iter_value(at)).release());
    }
    return object;
}

Tree Generator::vary_array(Place& place, json_t* example) {
    const size_t there = json_array_size(example);
    const size_t length = there == 0 ? 0 : length_of(place, std::max<size_t>(3, there));
    Tree array{json_array()};
    for (size_t at = 0; at < length; ++at) {
        json_t* element = json_array_get(example, at < there && chance(70) ? at : below(there));
        json_array_append_new(array.get(), inside(place, std::to_string(at), "*", element).release());
    }
    return array;
}

Tree Generator::vary_leaf(Place& place, json_t* example) {
    const Row* row = row_of(place, {"kind", "values"});
    if (row == nullptr) return Tree{like_leaf(example)};
    if (row->says("kind")) return Tree{of_kind(json_string_value((*row)["kind"]), place, example)};
    json_t* values = (*row)["values"];
    for (size_t i = 0; i < json_array_size(values); ++i) expect(place, text_of_value(json_array_get(values, i)));
    json_t* value = json_array_get(values, below(json_array_size(values)));
    visit(place, text_of_value(value));
    return Tree{json_deep_copy(value)};
}

// Without leading zeros, which no number keeps.
std::string Generator::digits() {
    return std::to_string(random_() % (chance(20) ? 100000000 : 1000));
}

std::string Generator::word() {
    std::string text;
    for (size_t length = 1 + below(8); length > 0; --length) text += static_cast<char>('a' + below(26));
    return text;
}

json_t* Generator::like_leaf(json_t* example) {
    if (json_is_boolean(example)) return json_boolean(chance(50));
    if (json_is_integer(example)) return json_integer(static_cast<json_int_t>(std::stoul(digits())));
    if (json_is_null(example)) return chance(30) ? json_null() : json_string(word().c_str());
    if (!json_is_string(example)) return json_incref(example);
    if (is_number(json_string_value(example))) return json_string(digits().c_str());
    return json_string(json_string_length(example) == 0 && chance(50) ? "" : word().c_str());
}

// As the old layout may have it: a text as a rule.
json_t* Generator::any_number() {
    if (chance(10)) return json_string("");
    return chance(10) ? json_integer(static_cast<json_int_t>(std::stoul(digits()))) : json_string(digits().c_str());
}

json_t* Generator::of_kind(const std::string& kind, const Place& place, json_t* example) {
    const auto position = [&place] {
        return static_cast<json_int_t>(std::stoul(place.path[place.path.size() - 2].name));
    };
    const auto list_name = [&place] { return place.path[place.path.size() - 3].name; };
    const auto numbered = [&](const std::string& prefix) {
        return json_string((prefix + (position() < 10 ? "0" : "") + std::to_string(position())).c_str());
    };
    const auto address = [this] { return "192.0.2." + std::to_string(below(256)); };
    if (kind == "position") return json_integer(position());
    if (kind == "number of its own") return json_integer(position() + 1);
    if (kind == "name in order") return numbered("n");
    if (kind == "name in order of its list") return numbered(list_name());
    if (kind == "password") return chance(10) ? json_null() : json_string(chance(10) ? "" : word().c_str());
    if (kind == "number") return any_number();
    if (kind == "small integer") return json_integer(static_cast<json_int_t>(below(101)));
    if (kind == "address") return json_string(address().c_str());
    if (kind == "text") return json_string(word().c_str());
    if (kind == "names of |") return json_string(chance(20) ? "" : (address() + "|" + address() + "|").c_str());
    if (kind == "names of ,") return json_string((word() + "," + word()).c_str());
    if (kind == "base64") {
        char* text = nullptr;
        k_str_base64_encode(chance(10) ? "" : word().c_str(), &text);
        json_t* value = json_string(text);
        std::free(text);
        return value;
    }
    return json_incref(example);
}
