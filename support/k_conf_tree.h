// k_conf_tree.h: what the differences need of JSON trees: ownership, extent, equality.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "k_conf.h"
#include "members.h"
#include "owned.h"

namespace kcnvrt::conf {

inline bool is_object(const json_t* value) {
    return json_is_object(value);
}

inline bool is_array(const json_t* value) {
    return json_is_array(value);
}

inline bool is_container(const json_t* value) {
    return is_object(value) || is_array(value);
}

using Members = MembersOf<std::string_view>;

// What an object has under a name, or null.
inline json_t* member(json_t* object, std::string_view name) {
    return json_object_getn(object, name.data(), name.size());
}

// A new container that shares its members with the old one (a leaf is copied). Null when memory runs out, where
// json_copy leaves members out in silence; nor does that tell apart names that are equal up to a NUL.
Json shallow_copy(json_t* value);

// The text of a string; empty for anything else.
inline std::string_view view_of(json_t* string) {
    return json_is_string(string) ? std::string_view{json_string_value(string), json_string_length(string)}
                                  : std::string_view{};
}

// Stores under a name that came out of a tree. False when memory runs out; an absent value means that it did.
inline bool store(json_t* object, std::string_view name, Json value) {
    return json_object_setn_new_nocheck(object, name.data(), name.size(), value.release()) == 0;
}

// Every walk recurses, so every document is measured first. The bound is the one of Jansson's parser.
constexpr size_t kMaxLevels = K_CONF_MAX_LEVELS;

enum class Extent { kFits, kTooDeep, kTooLarge };

// Whether a value has at most `levels` containers inside one another, and costs at most *left to walk. What it costs,
// one for a value and a little for a long text, is taken from *left.
Extent measure(json_t* value, size_t levels, uint64_t* left);

constexpr uint64_t kUnlimited = UINT64_MAX;

enum class Numbers {
    kExact,   // 1, 1.0, 0.0 and -0.0 are four numbers
    kByValue  // two numbers
};

// Of two values that are not both objects or both arrays.
bool equal_leaves(json_t* a, json_t* b, Numbers numbers);

// Equality of whole trees, the second of which may be absent.
bool equal_trees(json_t* a, json_t* b, Numbers numbers);

}  // namespace kcnvrt::conf
