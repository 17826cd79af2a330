// Words are told by their pairs of ways, and the document's objects by their addresses.
#include "word_places.h"

#include <algorithm>

#include "frame/field.h"

using namespace kcnvrt;

namespace {

struct NamedWord {
    const char* name;
    Way to_new;
    Way to_old;
};

template <Way ToNew, Way ToOld>
constexpr NamedWord named(const char* name, const Word<ToNew, ToOld>&) {
    return {name, ToNew, ToOld};
}

// clang-format off
const NamedWord kWords[] = {
    named("carried_or_false", carried_or_false),
    named("integer_field",    integer_field),
    named("boolean_field",    boolean_field),
    named("string_field",     string_field),
    named("password",         password),
    named("status",           status),
    named("boolean_in_new",   boolean_in_new),
    named("boolean_in_old",   boolean_in_old),
    named("boolean_in_both",  boolean_in_both),
    named("integer_in_new",   integer_in_new),
    named("integer_in_old",   integer_in_old),
    named("integer_in_both",  integer_in_both),
};
// clang-format on

const char* word_of(const Field& row) {
    for (const NamedWord& word : kWords)
        if (word.to_new == row.to_new && word.to_old == row.to_old) return word.name;
    return nullptr;
}

}  // namespace

bool is_word(const std::string& name) {
    return std::any_of(std::begin(kWords), std::end(kWords), [&](const NamedWord& word) { return word.name == name; });
}

std::vector<std::string> word_names() {
    std::vector<std::string> names;
    for (const NamedWord& word : kWords) names.emplace_back(word.name);
    return names;
}

WordPlaces::WordPlaces(Side side, json_t* document) : side_{side}, document_{document} {
    Path path;
    walk(document, path, [this](const Path&, json_t* value) {
        if (json_is_object(value)) objects_[value];
    });
}

WordPlaces::WordPlaces(const WordPlaces& places, json_t* copy) : side_{places.side_}, document_{copy} {
    adopt(places, places.document_, copy);
}

void WordPlaces::adopt(const WordPlaces& places, json_t* value, json_t* copy) {
    if (json_is_object(value)) objects_[copy] = places.objects_.at(value);
    const char* name;
    json_t* member;
    json_object_foreach(value, name, member) adopt(places, member, json_object_get(copy, name));
    for (size_t at = 0; at < json_array_size(value); ++at)
        adopt(places, json_array_get(value, at), json_array_get(copy, at));
}

void WordPlaces::see(const RowRun& run) {
    if (run.from != side_) return;
    const auto object = objects_.find(run.object);
    const char* word = word_of(run.row);
    if (object != objects_.end() && word != nullptr) object->second[std::string{run.name.view()}].insert(word);
}

bool WordPlaces::has(const Path& path, const std::string& word) const {
    if (path.empty()) return false;
    const auto names = names_in({path.begin(), path.end() - 1}, word);
    return std::find(names.begin(), names.end(), path.back().name) != names.end();
}

std::vector<std::string> WordPlaces::names_in(const Path& object, const std::string& word) const {
    std::vector<std::string> names;
    const auto members = objects_.find(object.empty() ? document_ : object.back().value);
    if (members == objects_.end()) return names;
    for (const auto& [name, words] : members->second)
        if (words.count(word) != 0) names.push_back(name);
    return names;
}
