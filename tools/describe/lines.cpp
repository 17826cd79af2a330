// Places of which everything is the same share a line, and lines that say the two directions of one thing are joined.
#include "lines.h"

#include <algorithm>

namespace describe {

namespace {

bool gives_only(json_t* behaviour, const char* what) {
    if (json_array_size(behaviour) == 0) return false;
    size_t position;
    json_t* said;
    json_array_foreach(behaviour, position, said) {
        if (json_object_get(said, "but") != nullptr || json_object_get(said, "takes") != nullptr) return false;
        const char* const gives = json_string_value(json_object_get(said, "gives"));
        if (gives == nullptr ? std::string{"itself"} != what : std::string{gives} != what) return false;
    }
    return true;
}

// What kind of place it is, where no word of a table says so.
std::string kind_of(const Finding& finding) {
    if (!finding.word.empty()) return finding.word;
    if (finding.is_dropped) return "dropped";
    if (finding.is_selector) return "chooses";
    if (finding.is_name) return "name";
    if (finding.is_whole || gives_only(finding.behaviour.get(), "itself")) return "carried";
    size_t position;
    json_t* said;
    json_array_foreach(finding.behaviour.get(), position, said) {
        const char* const type = json_string_value(json_array_get(json_object_get(said, "of"), 0));
        json_t* const values = json_object_get(json_object_get(said, "takes"), "values");
        if (values != nullptr && json_array_size(values) == 0) continue;
        const char* const gives = json_string_value(json_object_get(said, "gives"));
        if (values != nullptr || (gives == nullptr && json_array_size(json_object_get(said, "but")) > 3)) return "code";
        return std::string{type} == "string" ? "text" : type;
    }
    return "other";
}

struct Half {
    std::vector<std::string> places;
    std::vector<std::string> results;
    std::string kind;
    json_t* behaviour;
};

void add_all(std::vector<std::string>& places, const std::vector<std::string>& more) {
    for (const std::string& place : more)
        if (std::find(places.begin(), places.end(), place) == places.end()) places.push_back(place);
}

std::vector<std::string> sorted(std::vector<std::string> places) {
    std::sort(places.begin(), places.end());
    return places;
}

template <class AreAlike>
void join(std::vector<Half>& halves, Half half, const AreAlike& are_alike) {
    for (Half& known : halves)
        if (known.kind == half.kind && json_equal(known.behaviour, half.behaviour) != 0 && are_alike(known, half)) {
            add_all(known.places, half.places);
            add_all(known.results, half.results);
            return;
        }
    halves.push_back(std::move(half));
}

std::vector<std::string> without_types(const std::vector<std::string>& places) {
    std::vector<std::string> plain;
    for (const std::string& place : places) add_all(plain, {describe::without_types(place)});
    return sorted(plain);
}

std::vector<Half> halves_of(const std::vector<Finding>& findings) {
    std::vector<Half> by_name;
    for (const Finding& finding : findings) {
        if (!finding.container.empty()) continue;
        const std::string end = finding.is_whole ? "/**" : "";
        std::vector<std::string> results = finding.results;
        for (std::string& result : results) result += end;
        const auto is_same_name = [&](const Half& known, const Half& half) {
            return describe::without_types(known.places.front()) == describe::without_types(half.places.front());
        };
        join(by_name, {{finding.place + end}, results, kind_of(finding), finding.behaviour.get()}, is_same_name);
    }
    std::vector<Half> by_result;
    for (Half& half : by_name)
        join(by_result, std::move(half), [](const Half& known, const Half& added) {
            return !added.results.empty() && without_types(known.results) == without_types(added.results);
        });
    return by_result;
}

}  // namespace

std::vector<std::string> compressed(const std::vector<std::string>& places) {
    std::vector<Names> rows;
    for (const std::string& place : places) rows.push_back(names_of(place));
    const auto differ_only_at = [](Names one, Names other, size_t step) {
        if (one.size() != other.size() || (one[step].front() == '[') != (other[step].front() == '[')) return false;
        one[step] = other[step];
        return one == other;
    };
    const auto joined = [](const std::string& one, const std::string& other) {
        const bool is_type = one.front() == '[';
        return is_type ? one.substr(0, one.size() - 1) + "|" + other.substr(1) : one + "|" + other;
    };
    for (size_t step = 0; step < 12; ++step) {
        std::vector<Names> fewer;
        for (const Names& row : rows) {
            const auto alike = std::find_if(fewer.begin(), fewer.end(), [&](const Names& known) {
                return step < row.size() && row[step] != "*" && row[step] != "**" && known.size() > step &&
                       known[step] != "*" && differ_only_at(known, row, step);
            });
            if (alike == fewer.end())
                fewer.push_back(row);
            else
                (*alike)[step] = joined((*alike)[step], row[step]);
        }
        rows = std::move(fewer);
    }
    std::vector<std::string> list;
    for (const Names& row : rows) list.push_back(pointer_of(row));
    return list;
}

std::vector<Line> lines_of(const std::vector<Finding>& old_findings, const std::vector<Finding>& new_findings) {
    std::vector<Line> lines;
    for (const Half& half : halves_of(old_findings))
        lines.push_back({half.places, half.results, half.kind, half.behaviour, nullptr});
    for (const Half& half : halves_of(new_findings)) {
        const auto pair = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
            return line.to_old == nullptr && sorted(line.new_places) == sorted(half.places) &&
                   sorted(line.old_places) == sorted(half.results);
        });
        if (pair != lines.end())
            pair->to_old = half.behaviour;
        else
            lines.push_back({half.results, half.places, half.kind, nullptr, half.behaviour});
    }
    return lines;
}

}  // namespace describe
