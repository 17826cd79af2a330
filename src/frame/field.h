// field.h: a section is a table of fields, and a field is two names and a word that says how its value crosses.
//
//     constexpr auto kPppService = fields(
//         //            old                  new
//         integer_field("auth"),
//         password     ("password"),
//         carried      ("iface",             "phy_iface"),
//         status       ("connection_status"));
//
//     int failures = to_new(kPppService, old_service, new_service, report);
//
// One table serves both directions; where a direction visits the fields in another order, that order is the order of
// its messages, and the direction has a table of its own.
#pragma once

#include <cstddef>

#include "field_table.h"
#include "ways.h"

namespace kcnvrt {

// A word makes a row: `word("name")` or `word("old name", "new name")`. It is the two ways of a value, towards the new
// layout and towards the old one; a null way writes nothing in that direction.
template <Way ToNew, Way ToOld>
struct Word {
    template <size_t OldN, size_t NewN>
    constexpr auto operator()(const char (&old_name)[OldN], const char (&new_name)[NewN]) const {
        FieldRow<OldN, NewN, ToNew, ToOld> row{};
        for (size_t i = 0; i < OldN; ++i) row.old_name[i] = old_name[i];
        for (size_t i = 0; i < NewN; ++i) row.new_name[i] = new_name[i];
        return row;
    }
    template <size_t N>
    constexpr auto operator()(const char (&name)[N]) const {
        return (*this)(name, "");
    }
};

// A pair of ways that has no word of its own: `field<ToNew, ToOld>("name")`.
template <Way ToNew, Way ToOld>
inline constexpr Word<ToNew, ToOld> field;

// In both directions an absent value stores nothing, but for the two words that say so, and anything else that a word
// does not name fails: it is reported, counted and not stored.

// The value as it stands, whatever its type; towards new, carried_or_false makes false of an absent one.
inline constexpr Word<ways::carry, ways::carry> carried;
inline constexpr Word<ways::carry_or_false, ways::carry> carried_or_false;

// The old layout has texts where the new one has types.
// To new: digits become an integer, "" is left out, an integer is carried. To old: its text, cut to seven characters.
inline constexpr Word<ways::integer_to_new, ways::integer_to_old> integer_field;
// To new: "1", "true" and 1 become true, "0", "false" and 0 false, a boolean is carried. To old: "1" or "0".
inline constexpr Word<ways::boolean_to_new, ways::boolean_to_old> boolean_field;
// To new: a text is carried and null becomes "". To old: a text is carried and "" becomes null.
inline constexpr Word<ways::string_to_new, ways::string_to_old> string_field;
// To new: plain text becomes base64. To old: base64 becomes plain text. Either way null becomes "".
inline constexpr Word<ways::password_to_new, ways::password_to_old> password;
// To new: a text is carried; an absent one and "" become "Disconnected". To old: carried.
inline constexpr Word<ways::status_to_new, ways::carry> status;

// Some old sections have types, too. Such a word says in which layout the value has its type: on the way into that
// layout it is converted as boolean_field, integer_field and string_field convert it to new; on the way out, carried.
inline constexpr Word<ways::boolean_to_new, ways::carry> boolean_in_new;
inline constexpr Word<ways::carry, ways::boolean_to_new> boolean_in_old;
inline constexpr Word<ways::boolean_to_new, ways::boolean_to_new> boolean_in_both;
inline constexpr Word<ways::integer_to_new, ways::carry> integer_in_new;
inline constexpr Word<ways::carry, ways::integer_to_new> integer_in_old;
inline constexpr Word<ways::integer_to_new, ways::integer_to_new> integer_in_both;
inline constexpr Word<ways::string_to_new, ways::carry> string_in_new;
inline constexpr Word<ways::string_to_new, ways::string_to_new> string_in_both;

// One direction alone.
inline constexpr Word<ways::carry, nullptr> carried_to_new;
inline constexpr Word<nullptr, ways::carry> carried_to_old;
inline constexpr Word<ways::integer_to_new, nullptr> integer_to_new;
inline constexpr Word<nullptr, ways::integer_to_old> integer_to_old;
inline constexpr Word<ways::string_to_new, nullptr> string_to_new;

// To new: a text is carried, and "" becomes the default. To old: carried.
template <ways::Text Default>
inline constexpr Word<ways::string_or<Default>, ways::carry> text_or;

// One field, from a member of one object to that of another. Its messages have their place. Returns the count of failed
// fields.
inline int cross(Way way, json_t* source, Key name, json_t* destination, Key key, const Report& report) {
    return report.placed(way(destination, key, get(source, name), report), source, name);
}

// The engine: every field of the table, in the table's order, from one object into another.
// Returns the count of failed fields.
int to_new(Fields fields, json_t* old_object, json_t* new_object, const Report& report);
int to_old(Fields fields, json_t* new_object, json_t* old_object, const Report& report);

}  // namespace kcnvrt
