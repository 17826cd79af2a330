// behaviour.h: what becomes of the values of one place, said in few words.
//
// A behaviour is an array of objects, one for the JSON types that are treated alike:
//     "of"     the types
//     "takes"  the values of theirs that cross; left out where all do
//     "gives"  what those become: a word, {"value": one and the same}, or {"member": the name or place of the one that
//              gives it}; left out where it stays the same
//     "but"    the values that become something else, each [value, what it becomes], [value] where it is dropped, or
//              [value, null, name] where the member of that name gives it
//     "says"   the messages of the others, KEY, TEXT and N standing for what is put in
// and one with "of": ["absent"] where an absent member gives something or is reported.
#pragma once

#include <string>
#include <vector>

#include "texts.h"
#include "tree.h"

namespace describe {

// A value, and what a conversion made of it.
struct Reply {
    Tree value;           // null for an absent one
    Tree result;          // null where nothing was written
    std::string message;  // "" where it was taken
};

// The result that another member gives, whatever that is.
Tree what_member_gives(const std::string& name);

class Replies {
public:
    explicit Replies(const Texts& texts) : texts_{texts} {}

    void add(Reply reply) { replies_.push_back(std::move(reply)); }
    // Whether some texts are told from others by what they are: then more of them have to be asked.
    bool has_codes() const;
    // The texts and integers that are told so, in order, where they are few.
    Tree behaviour() const;

private:
    const Texts& texts_;
    std::vector<Reply> replies_;
};

}  // namespace describe
