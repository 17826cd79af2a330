// Sources are read as texts: a literal is what stands between two quotes on a line.
#include "texts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

namespace describe {

namespace {

constexpr size_t kLongestCode = 24;

void add_literals(const std::filesystem::path& file, std::set<std::string>& literals) {
    static const std::regex literal{"\"([A-Za-z0-9][A-Za-z0-9 ._-]*)\""};
    std::ifstream lines{file};
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("#include")) continue;
        for (std::sregex_iterator found{line.begin(), line.end(), literal}, end; found != end; ++found)
            if (found->str(1).size() <= kLongestCode) literals.insert(found->str(1));
    }
}

}  // namespace

Texts::Texts(const char* file, const std::string& sources) {
    json_error_t error;
    const Tree list{json_load_file(file, JSON_REJECT_DUPLICATES, &error)};
    if (list == nullptr) {
        std::fprintf(stderr, "%s:%d: %s\n", file, error.line, error.text);
        std::exit(1);
    }
    size_t at;
    json_t* row;
    json_array_foreach(list.get(), at, row) {
        const std::string name = json_string_value(json_object_get(row, "name"));
        const std::string pattern = json_string_value(json_object_get(row, "pattern"));
        if (!pattern.empty()) kinds_.push_back({name, pattern, std::regex{pattern, std::regex::ECMAScript}});
        size_t number;
        json_t* sample;
        json_array_foreach(json_object_get(row, "samples"), number, sample)
            samples_.emplace_back(json_string_value(sample), json_string_length(sample));
    }
    std::set<std::string> literals;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{sources})
        if (entry.is_regular_file()) add_literals(entry.path(), literals);
    words_.assign(literals.begin(), literals.end());
    literals_ = words_;
}

namespace {

void collect(json_t* value, std::set<std::string>& members, std::set<std::string>& values) {
    if (json_is_string(value)) values.insert(json_string_value(value));
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) {
        members.insert(name);
        collect(member, members, values);
    }
    for (size_t at = 0; at < json_array_size(value); ++at) collect(json_array_get(value, at), members, values);
}

}  // namespace

void Texts::leave_out_members(json_t* document) {
    std::set<std::string> members;
    std::set<std::string> values;
    collect(document, members, values);
    std::erase_if(literals_, [&](const std::string& literal) {
        return members.count(literal) != 0 && values.count(literal) == 0;
    });
}

Tree integer(json_int_t number) {
    return Tree{json_integer(number)};
}

Tree string(const std::string& text) {
    return Tree{json_stringn(text.data(), text.size())};
}

std::vector<Tree> probes_of_every_type() {
    std::vector<Tree> probes;
    probes.emplace_back(json_null());
    probes.emplace_back(json_false());
    probes.emplace_back(json_true());
    for (const json_int_t number :
         {-2147483649LL, -2147483648LL, -100LL,       -1LL,         0LL,          1LL,         2LL,
          3LL,           4LL,           5LL,          6LL,          7LL,          8LL,         9LL,
          17LL,          46LL,          100LL,        101LL,        255LL,        256LL,       4094LL,
          65535LL,       65536LL,       2147483647LL, 2147483648LL, 4294967295LL, 4294967296LL})
        probes.push_back(integer(number));
    probes.emplace_back(json_real(0.5));
    probes.emplace_back(json_real(12.25));
    probes.emplace_back(json_array());
    probes.emplace_back(json_pack("[s]", "text"));
    probes.emplace_back(json_object());
    probes.emplace_back(json_pack("{s:s}", "member", "text"));
    return probes;
}

}  // namespace describe
