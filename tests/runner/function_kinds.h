// function_kinds.h: the kinds of functions that a case can call. A kind knows the members that a case of it may have,
// and how its functions are called with them.
#pragma once

#include <jansson.h>

#include <cstdint>
#include <string>
#include <vector>

#include "k_err.h"
#include "tree.h"

// What a function is called with: copies of the trees of a case, and its texts and numbers.
class Inputs {
public:
    explicit Inputs(const json_t* data) : data_{json_deep_copy(data)} {}

    // A member left out is a null pointer.
    json_t* tree(const char* name) const { return json_object_get(data_.get(), name); }
    const char* text(const char* name) const { return json_string_value(tree(name)); }
    int number(const char* name) const { return static_cast<int>(json_integer_value(tree(name))); }
    uint8_t flags() const { return static_cast<uint8_t>(number("flags")); }

    const char* function() const { return tree("function") == nullptr ? "caller" : text("function"); }
    Tree destination() const {
        json_t* initial = tree("destination");
        return Tree{initial == nullptr ? json_object() : json_deep_copy(initial)};
    }

    // Every tree of the case at once, with the order of the members.
    bool are_those_of(const json_t* data) const { return text_of(data_.get()) == text_of(data); }
    void release() { data_.reset(); }

private:
    Tree data_;
};

struct Returned {
    int result = 0;
    Tree output;
};

// The members that a call takes and expects, beside "case" and "call".
enum class Type { kTree, kText, kInteger, kSwitch, kMessages, kPointers, kHandler };
enum class Need { kOptional, kRequired };

struct MemberRule {
    const char* name;
    Type type;
    Need need = Need::kOptional;
};

// Where the places of messages are.
enum class Places {
    kNone,      // the function is given no source
    kToLocate,  // in the source, once its caller locates them
    kLocated,   // in the source, or in the difference or candidate
};

struct Kind {
    Returned (*call)(const Inputs& in, const char* name, k_err_t* err);
    Places places;
    std::vector<const char*> functions;
    std::vector<MemberRule> members;
};

// A name that no other kind lists is a section handler.
const Kind& kind_of(const std::string& function);
