// Rows are read from their file, and asked what they speak of.
#include "rows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "word_places.h"

namespace {

void add(std::vector<std::string>& names, const std::vector<std::string>& more) {
    names.insert(names.end(), more.begin(), more.end());
}

}  // namespace

bool Row::is_of(Side layout) const {
    const char* name = json_string_value((*this)["layout"]);
    return name == nullptr || std::strcmp(name, layout == Side::kOld ? "old" : "new") == 0;
}

bool Row::matches(const Path& path) const {
    return std::any_of(places.begin(), places.end(), [&](const Pattern& place) { return place.matches(path); });
}

std::vector<std::string> Row::names_in(const Path& object) const {
    std::vector<std::string> names;
    for (const Pattern& place : places)
        if (place.parent().matches(object)) add(names, place.last_names());
    return names;
}

bool Row::matches(const Path& path, const WordPlaces& word_places) const {
    const auto stands_there = [&](const std::string& word) { return word_places.has(path, word); };
    return matches(path) || std::any_of(words.begin(), words.end(), stands_there);
}

std::vector<std::string> Row::names_in(const Path& object, const WordPlaces& word_places) const {
    std::vector<std::string> names = names_in(object);
    for (const std::string& word : words) add(names, word_places.names_in(object, word));
    return names;
}

bool Row::may_be_in(json_t* document) const {
    if (!words.empty()) return true;
    for (const Pattern& place : places)
        if (place.begins_in(document)) return true;
    return false;
}

namespace {

[[noreturn]] void fail(const char* file, int line, const std::string& problem) {
    std::fprintf(stderr, "%s:%d: %s\n", file, line, problem.c_str());
    std::exit(1);
}

// Texts of the row, which its own text lists.
std::vector<std::string> listed(Row& row, const char* name) {
    std::vector<std::string> texts;
    for (size_t at = 0; at < json_array_size(row[name]); ++at) {
        texts.push_back(json_string_value(json_array_get(row[name], at)));
        row.text += (row.text.empty() ? "" : ", ") + texts.back();
    }
    return texts;
}

Row row_of(json_t* data) {
    Row row{Tree{json_incref(data)}, {}, {}, "", 0};
    for (const std::string& place : listed(row, "places")) row.places.emplace_back(place);
    row.words = listed(row, "words");
    return row;
}

}  // namespace

std::vector<Row> load_rows(const char* file) {
    json_error_t error;
    const Tree list{json_load_file(file, JSON_REJECT_DUPLICATES, &error)};
    if (list == nullptr) fail(file, error.line, error.text);
    std::vector<Row> rows;
    for (size_t i = 0; i < json_array_size(list.get()); ++i) rows.push_back(row_of(json_array_get(list.get(), i)));
    for (const Row& row : rows)
        for (const std::string& word : row.words)
            if (!is_word(word)) fail(file, 0, "\"" + word + "\" is none of the words that are known here");
    return rows;
}
