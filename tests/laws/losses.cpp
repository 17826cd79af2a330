// The losses of single members: values that change or go, and members that come in addition.
#include "losses.h"

#include <cstring>
#include <string>
#include <utility>

#include "conditions.h"
#include "joint_losses.h"

namespace {

// A member or element out of its container.
void remove(json_t* container, const Step& step) {
    if (json_is_object(container)) {
        json_object_del(container, step.name.c_str());
        return;
    }
    for (size_t i = 0; i < json_array_size(container); ++i)
        if (json_array_get(container, i) == step.value) json_array_remove(container, i);
}

void put(json_t* container, const Step& step, Tree value) {
    if (json_is_object(container)) {
        json_object_set_new(container, step.name.c_str(), value.release());
        return;
    }
    for (size_t i = 0; i < json_array_size(container); ++i)
        if (json_array_get(container, i) == step.value) json_array_set_new(container, i, value.release());
}

// The first seven characters of a number.
Tree cut(json_t* value) {
    const std::string text =
        json_is_string(value) ? json_string_value(value) : std::to_string(json_integer_value(value));
    const std::string kept = text.substr(0, 7);
    return Tree{json_is_string(value) ? json_string(kept.c_str()) : json_integer(std::stoll(kept))};
}

Tree as_integer(json_t* value) {
    return Tree{json_is_string(value) ? json_integer(std::stoll(json_string_value(value))) : json_incref(value)};
}

Tree as_text(json_t* value) {
    return Tree{json_is_integer(value) ? json_string(std::to_string(json_integer_value(value)).c_str())
                                       : json_incref(value)};
}

// What comes back in place of a value; null where nothing does.
Tree what_comes_of(const Row& row, json_t* value) {
    const std::string loss = json_string_value(row["loss"]);
    if (loss == "dropped") return nullptr;
    if (loss == "cut") return cut(value);
    if (loss == "becomes an integer") return as_integer(value);
    if (loss == "becomes a text") return as_text(value);
    if (loss == "becomes") return Tree{json_deep_copy(row["value"])};
    return Tree{json_incref(value)};
}

// Rows on values that are there.
size_t change_values(const Row& row, json_t* document, const WordPlaces& words) {
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* value) {
        if (at.empty() || !row.matches(at, words)) return;
        if (!speaks_of(row, value)) return;
        json_t* container = at.size() == 1 ? document : at[at.size() - 2].value;
        if (!holds_in(row, container)) return;
        Tree changed = what_comes_of(row, value);
        if (changed != nullptr && json_equal(changed.get(), value)) return;
        ++seen;
        if (changed == nullptr)
            remove(container, at.back());
        else
            put(container, at.back(), std::move(changed));
    });
    return seen;
}

// A bare list of addresses as a list of stations.
Tree stations_of(json_t* addresses) {
    if (addresses == nullptr) return nullptr;
    Tree stations{json_object()};
    for (size_t i = 0; i < json_array_size(addresses); ++i)
        json_object_set_new(
            stations.get(), std::to_string(i + 1).c_str(),
            json_pack("{s:O, s:s, s:b}", "mac", json_array_get(addresses, i), "hostname", "", "active", 0));
    json_object_set_new(stations.get(), "max_instance",
                        json_integer(static_cast<json_int_t>(json_array_size(addresses))));
    return stations;
}

// What a member that comes in addition holds: a value, the number of the entry that it is in, the name of something
// above it, or what another member holds.
Tree added_value(const Row& row, const Path& object_path, json_t* object) {
    if (json_t* levels = row["name above"]) {
        const size_t up = static_cast<size_t>(json_integer_value(levels));
        return Tree{json_string(object_path[object_path.size() - up].name.c_str())};
    }
    if (json_t* first = row["value number"]) {
        return Tree{json_integer(std::stoll(object_path.back().name) + json_integer_value(first))};
    }
    if (json_t* levels = row["value above"]) {
        const size_t up = static_cast<size_t>(json_integer_value(levels));
        json_t* above = object_path[object_path.size() - up].value;
        return Tree{json_incref(json_object_get(above, row.places.front().last_names().front().c_str()))};
    }
    if (json_t* counted = row["count of"]) {
        const size_t size = json_object_size(json_object_get(object, json_string_value(counted)));
        const size_t less = row.says("less") ? static_cast<size_t>(json_integer_value(row["less"])) : 1;
        return Tree{json_integer(static_cast<json_int_t>(size > less ? size - less : 0))};
    }
    if (json_t* addresses = row["stations of"])
        return stations_of(json_object_get(object, json_string_value(addresses)));
    if (json_t* member = row["value of"])
        return Tree{json_deep_copy(json_object_get(object, json_string_value(member)))};
    return Tree{json_deep_copy(row["value"])};
}

// Rows on members that come in addition, "added" over what is there and "default" where nothing is.
size_t add_members(const Row& row, json_t* document, const WordPlaces& words) {
    const bool is_default = std::strcmp(json_string_value(row["loss"]), "default") == 0;
    size_t seen = 0;
    Path path;
    walk(document, path, [&](const Path& at, json_t* object) {
        if (!json_is_object(object) || !holds_in(row, object)) return;
        for (const std::string& each : row.names_in(at, words)) {
            const char* name = each.c_str();
            if (is_default && json_object_get(object, name) != nullptr) continue;
            Tree value = added_value(row, at, object);
            if (value == nullptr || json_equal(json_object_get(object, name), value.get())) continue;
            ++seen;
            json_object_set_new(object, name, value.release());
        }
    });
    return seen;
}

size_t apply(const Row& row, json_t* document, const WordPlaces& words) {
    if (!is_for(row, document)) return 0;
    const std::string loss = json_string_value(row["loss"]);
    if (const JointLoss joint = joint_loss(loss)) return joint(row, document);
    return loss == "added" || loss == "default" ? add_members(row, document, words)
                                                : change_values(row, document, words);
}

}  // namespace

Losses::Losses(Side side, const std::vector<Row>& rows, json_t* example) {
    for (const Row& row : rows)
        if (row.is_of(side) && row.may_be_in(example)) rows_.push_back(&row);
}

Tree Losses::apply_to(json_t* document, const WordPlaces& words) const {
    Tree kept{json_deep_copy(document)};
    const WordPlaces words_there{words, kept.get()};
    for (const Row* row : rows_) row->seen += apply(*row, kept.get(), words_there);
    return kept;
}
