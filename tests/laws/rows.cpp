#include "rows.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

bool Row::is_of(Side layout) const {
    const char* name = json_string_value((*this)["layout"]);
    return name == nullptr || std::strcmp(name, layout == Side::kOld ? "old" : "new") == 0;
}

bool Row::matches(const Path& path) const {
    for (const Pattern& place : places)
        if (place.matches(path)) return true;
    return false;
}

bool Row::may_be_in(json_t* document) const {
    for (const Pattern& place : places)
        if (place.begins_in(document)) return true;
    return false;
}

std::vector<Row> load_rows(const char* file) {
    json_error_t error;
    const Tree list{json_load_file(file, JSON_REJECT_DUPLICATES, &error)};
    if (list == nullptr) {
        std::fprintf(stderr, "%s:%d: %s\n", file, error.line, error.text);
        std::exit(1);
    }
    std::vector<Row> rows;
    for (size_t i = 0; i < json_array_size(list.get()); ++i) {
        json_t* data = json_array_get(list.get(), i);
        Row row{Tree{json_incref(data)}, {}, "", 0};
        json_t* places = json_object_get(data, "places");
        for (size_t at = 0; at < json_array_size(places); ++at) {
            const char* place = json_string_value(json_array_get(places, at));
            row.places.emplace_back(place);
            row.text += std::string{row.text.empty() ? "" : ", "} + place;
        }
        rows.push_back(std::move(row));
    }
    return rows;
}
