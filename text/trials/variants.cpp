#include "trials/variants.h"

#include <algorithm>

#include "json/pointer.h"
#include "trials/other_value.h"

namespace kcnvrt::text {

namespace {

// Empty of what is no text.
std::string_view text_of(const json_t* value) {
    if (!json_is_string(value)) return "";
    return {json_string_value(value), json_string_length(value)};
}

// What stands for each kind of value in turn. Texts of which only a few are allowed are tried with those that the
// document has elsewhere under the same name, and with their opposites.
constexpr std::string_view kOpposites[][2] = {
    {"Enabled", "Disabled"}, {"enabled", "disabled"}, {"enable", "disable"}, {"on", "off"},
    {"yes", "no"},           {"up", "down"},          {"true", "false"},     {"Connected", "Disconnected"},
};

Json text(std::string_view characters) {
    return Json(json_stringn(characters.data(), characters.size()));
}

std::string_view opposite_of(std::string_view word) {
    for (const auto& [one, other] : kOpposites) {
        if (word == one) return other;
        if (word == other) return one;
    }
    return {};
}

Json longer(std::string_view word) {
    Buffer words;
    return words.append(word) && words.append("x") ? text(words.view()) : nullptr;
}

// The first text of a member of that name that is not among those.
const json_t* find_text(json_t* value, std::string_view name, const GrowingArray<std::string_view>& known) {
    const char* each;
    size_t length;
    json_t* child;
    json_object_keylen_foreach(value, each, length, child) {
        const bool is_other = name == std::string_view(each, length) && json_is_string(child) &&
                              std::find(known.begin(), known.end(), text_of(child)) == known.end();
        const json_t* const found = is_other ? child : find_text(child, name, known);
        if (found != nullptr) return found;
    }
    size_t index;
    json_array_foreach(value, index, child) {
        if (const json_t* found = find_text(child, name, known)) return found;
    }
    return nullptr;
}

// What another member of that name says; empty where no more of them say something else. False when memory ends.
bool find_text_of_name(json_t* root, const Leaf& leaf, size_t number, std::string_view& found) {
    GrowingArray<std::string_view> known;
    if (!known.add(text_of(leaf.value))) return false;
    for (found = {}; known.size() <= number + 1; found = known.last()) {
        const json_t* const next = find_text(root, last_token_of(leaf.pointer), known);
        if (next == nullptr) {
            found = {};
            return true;
        }
        if (!known.add(text_of(next))) return false;
    }
    return true;
}

constexpr size_t kOfTheSameName = 8;  // from this variant on

bool is_made(Json value, Json& variant) {
    variant = std::move(value);
    return variant != nullptr;
}

bool make_text_of_name(json_t* root, const Leaf& leaf, size_t number, Json& variant) {
    std::string_view found;
    if (!find_text_of_name(root, leaf, number, found)) return false;
    return found.empty() || is_made(text(found), variant);
}

// Null where there is no such variant. False when memory ends.
bool make_variant(json_t* root, const Leaf& leaf, size_t number, bool is_alone, Json& variant) {
    json_t* const value = leaf.value;
    const std::string_view word = text_of(value);
    switch (number) {
        case 0:
            return !has_other_value(value) || is_made(other_value(value), variant);
        case 1:
            return opposite_of(word).empty() || is_made(text(opposite_of(word)), variant);
        case 2:
            return is_made(longer(word), variant);
        case 3:
            return is_made(text("0"), variant);
        case 4:
            return is_made(text("1"), variant);
        case 5:
            return is_made(Json(json_integer(json_is_integer(value) ? 100 : 1)), variant);
        case 6:
            return is_made(Json(json_boolean(!json_is_true(value))), variant);
        case 7:
            return is_made(Json(json_is_array(value) ? json_pack("[{}]") : json_pack("{s: {}}", "1")), variant);
        default:
            return !json_is_string(value) || !is_alone ||
                   make_text_of_name(root, leaf, number - kOfTheSameName, variant);
    }
}

}  // namespace

bool change_leaves(json_t* root, const Leaves& leaves, size_t first, size_t last, size_t variant, json_t* made,
                   GrowingArray<Change>& changes) {
    const bool is_alone = last - first == 1;
    for (size_t i = first; i < last; ++i) {
        Json other;
        if (!make_variant(root, leaves[i], variant, is_alone, other)) return false;
        if (!other || leaves[i].pointer.empty() || json_equal(other.get(), leaves[i].value) == 1) continue;
        json_t* const borrowed = other.get();
        if (json_array_append_new(made, other.release()) != 0) return false;
        if (!changes.add({leaves[i].pointer, borrowed})) return false;
    }
    return true;
}

}  // namespace kcnvrt::text
