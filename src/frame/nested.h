// nested.h: members with a table of their own: an object, a list of objects, objects keyed by instance number.
//
//     constexpr auto kIpsec = fields(
//         carried("enabled"),
//         list_field<kTunnel>("tunnels"));
#pragma once

#include "frame/field.h"
#include "frame/list.h"

namespace kcnvrt {

// A list of objects: an array against a numbered list, each entry through the table. The entry of an element that is no
// object has the members that an empty one has. Both fill the container that they are given.
int list_to_new(Fields fields, json_t* array, json_t* list, const Report& report);
int list_to_old(Fields fields, json_t* list, json_t* array, const Report& report);

// Objects keyed by instance number, under the same names in both layouts: each member that is an object through the
// table; others are dropped, except "max_instance", which is carried.
int instances_to_new(Fields fields, json_t* old_instances, json_t* new_instances, const Report& report);
int instances_to_old(Fields fields, json_t* new_instances, json_t* old_instances, const Report& report);

// Appends an object for every number of a list: {} for a missing one, the others as `fill(number, entry, object)` fills
// them.
template <class Fill>
int append_every_number(json_t* list, json_t* array, const Report& report, Fill fill) {
    int failures = 0;
    const EveryNumber numbers{list, report};
    for (const auto [number, entry] : numbers) {
        Json filled = object();
        if (entry != nullptr) failures += report.placed_entry(fill(number, entry, filled.get()), list, number);
        append(array, std::move(filled));
    }
    return failures + numbers.failures();
}

// Objects under the numbers of a list, filled as `fill(number, entry, object)` fills them; "max_instance" is carried.
template <class Fill>
int fill_every_instance(json_t* list, json_t* filled_list, const Report& report, Fill fill) {
    int failures = 0;
    for (const auto [number, entry] : Instances{list}) {
        Json filled = object();
        failures += report.placed_entry(fill(number, entry, filled.get()), list, number);
        set(filled_list, Decimal{number}, std::move(filled));
    }
    carry_max_instance(filled_list, list);
    return failures;
}

// How a table is run from one container into another: to_new, to_old, and those of lists and instances above.
using Walk = int (*)(Fields fields, json_t* source, json_t* destination, const Report& report);

// Stores a new container under the key, an array for list_to_old and else an object, walked into from the value; an
// absent value stores nothing.
int walk_member(Walk walk, Fields fields, json_t* destination, Key key, json_t* value, const Report& report);

namespace ways {

// `author` is the name that reports from inside carry, "" for that of the section.
template <Walk walk, const auto& table, Text author>
int nested(json_t* destination, Key key, json_t* value, const Report& report) {
    if constexpr (author.view().empty())
        return walk_member(walk, table, destination, key, value, report);
    else
        return walk_member(walk, table, destination, key, value, report.under(author.characters));
}

}  // namespace ways

// An object against an object, through the table.
template <const auto& table, ways::Text author = "">
inline constexpr auto object_field = field<ways::nested<to_new, table, author>, ways::nested<to_old, table, author>>;
// An array against a numbered list, each entry through the table.
template <const auto& table, ways::Text author = "">
inline constexpr auto list_field =
    field<ways::nested<list_to_new, table, author>, ways::nested<list_to_old, table, author>>;
// Objects under the same instance numbers in both layouts, each through the table.
template <const auto& table>
inline constexpr auto instances_field =
    field<ways::nested<instances_to_new, table, "">, ways::nested<instances_to_old, table, "">>;

}  // namespace kcnvrt
