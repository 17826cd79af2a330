// asked.h: what conversions with one value after another in a place have shown.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "behaviour.h"
#include "conversion.h"
#include "names.h"

namespace describe {

struct Asked {
    Tree value;  // null for none
    Answer answer;
};

// The place of the result that tells most of the values apart; of two the innermost, or the one with the same name.
Names telling_place(const std::vector<Asked>& asked, const std::set<Names>& places, json_t* base, const Names& names);

// The name that a text or a number would be; "" for none.
std::string name_in(json_t* value);
// Whether it is the name of a member of the result.
bool is_name(json_t* value, json_t* result, const Names& place);

// Whether a JSON text has that member with the value.
bool is_member_of_text(json_t* value, json_t* text, const std::string& name);

// The container that a JSON text has become.
bool is_json_of(json_t* value, json_t* result);

struct Seen {
    std::string name;
    Names place;                 // where the results differ
    std::vector<Names> entries;  // the entries of a list that a value becomes, of which that is one; else none
    std::set<std::string> keys;  // the names that messages may show
    bool are_names = false;      // the values are names of members of the result
    bool is_in_text = false;     // the result is a JSON text with the value in it
    bool is_all = false;         // of results only whether they are the same
};

// What became of the values, one for each that was asked.
std::vector<Reply> replies_to(const std::vector<Asked>& asked, const Seen& seen);
Replies replies_of(const Texts& texts, const std::vector<Asked>& asked, const Seen& seen);

// Of places of one list those entries that a value becomes, in their order; none where it becomes the same in each.
std::vector<Names> entries_beside(const std::vector<Asked>& asked, const std::set<Names>& places, const Names& one);

// How many there are in a value.
size_t leaves(json_t* value);

// Without the containers of others among them, and without the lengths of lists.
std::vector<std::string> innermost(const std::vector<std::string>& places);

// Neighbours among the integers of which one is taken and one is not, where there are few: bounds of a range.
std::vector<std::pair<json_int_t, json_int_t>> bounds(const std::vector<Asked>& asked);

// Where so many integers have others beside them that are not taken, each taken one is a code.
bool has_number_codes(const std::vector<Asked>& asked);

}  // namespace describe
