// texts.h: kinds of text, and the values that a place is asked with.
#pragma once

#include <regex>
#include <string>
#include <vector>

#include "tree.h"

namespace describe {

// The texts that an expression matches.
struct TextKind {
    std::string name;
    std::string pattern;  // in the dialect of JSON Schema
    std::regex expression;
};

// What texts.json lists, and what stands in the program's sources.
class Texts {
public:
    Texts(const char* file, const std::string& sources);

    const std::vector<TextKind>& kinds() const { return kinds_; }
    // The samples of every kind.
    const std::vector<std::string>& samples() const { return samples_; }
    // The words in quotes in the sources, without those that are only names of members: every name of a code.
    const std::vector<std::string>& literals() const { return literals_; }
    // All words in quotes.
    const std::vector<std::string>& words() const { return words_; }
    // Names of members in that document are no codes, unless they are values there.
    void leave_out_members(json_t* document);

private:
    std::vector<TextKind> kinds_;
    std::vector<std::string> samples_;
    std::vector<std::string> words_;
    std::vector<std::string> literals_;
};

// Two of each type, and every integer at which something may end.
std::vector<Tree> probes_of_every_type();
Tree integer(json_int_t number);
Tree string(const std::string& text);

}  // namespace describe
