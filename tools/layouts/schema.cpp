#include "schema.h"

#include <algorithm>
#include <cstdint>
#include <map>

#include "places.h"
#include "secrets.h"
#include "sentences.h"

namespace kcnvrt {

namespace {

void set(const JsonTree& object, const char* name, JsonTree value) {
    json_object_set_new(object.get(), name, value.release());
}

JsonTree text(const std::string& value) {
    return JsonTree(json_string(value.c_str()));
}

JsonTree empty() {
    return JsonTree(json_object());
}

JsonTree list() {
    return JsonTree(json_array());
}

void append(const JsonTree& array, JsonTree value) {
    json_array_append_new(array.get(), value.release());
}

// Whatever the values of the type are.
JsonTree of_type(const std::string& type) {
    // An integer is a number to JSON Schema.
    return JsonTree(type == "real" ? json_pack("{s:s, s:{s:s}}", "type", "number", "not", "type", "integer")
                                   : json_pack("{s:s}", "type", type.c_str()));
}

JsonTree taken(const Layouts& layouts, const std::string& type, json_t* takes) {
    if (json_t* const values = json_object_get(takes, "values")) return JsonTree(json_pack("{s:O}", "enum", values));
    JsonTree schema = of_type(type);
    if (json_t* const texts = json_object_get(takes, "texts"))
        set(schema, "pattern", text(layouts.pattern(json_string_value(texts))));
    json_t* const from = json_object_get(takes, "from");
    json_t* const to = json_object_get(takes, "to");
    // Of larger numbers no more than 32 bits come back.
    if (json_object_get(takes, "of") != nullptr)
        json_object_update_new(schema.get(), json_pack("{s:I, s:I}", "minimum", static_cast<json_int_t>(INT32_MIN),
                                                       "maximum", static_cast<json_int_t>(INT32_MAX)));
    if (from != nullptr) json_object_set(schema.get(), "minimum", from);
    // The one number that an entry takes is its position: the next entry takes the next one.
    if (to != nullptr && !json_equal(from, to)) json_object_set(schema.get(), "maximum", to);
    return schema;
}

// The types that are taken as they come, in one list; the others one by one.
class Choices {
public:
    explicit Choices(const Layouts& layouts) : layouts_(layouts) {}

    void add(json_t* said) {
        json_t* const takes = json_object_get(said, "takes");
        json_t* const values = json_object_get(takes, "values");
        if (values != nullptr && json_array_size(values) == 0) return;
        const bool is_all = takes == nullptr || json_object_get(takes, "some") != nullptr;
        std::size_t index;
        json_t* type;
        json_array_foreach(json_object_get(said, "of"), index, type) {
            const std::string name = json_string_value(type);
            if (name == "absent") continue;
            if (is_all)
                types_.push_back(name);
            else
                append(limited_, taken(layouts_, name, takes));
        }
    }

    // An empty schema where everything is taken.
    JsonTree schema() {
        constexpr std::size_t kAllTypes = 7;
        if (types_.size() == kAllTypes) return empty();
        const bool has_numbers = has("integer") && has("real");
        if (has_numbers) std::erase(types_, "integer");
        JsonTree plain = list();
        for (const std::string& type : types_)
            if (type != "real" || has_numbers) append(plain, text(type == "real" ? "number" : type));
        if (has("real") && !has_numbers) append(limited_, of_type("real"));
        if (json_array_size(plain.get()) > 0) {
            const bool is_one = json_array_size(plain.get()) == 1;
            append(limited_,
                   JsonTree(json_pack("{s:O}", "type", is_one ? json_array_get(plain.get(), 0) : plain.get())));
        }
        if (json_array_size(limited_.get()) == 1) return JsonTree(json_incref(json_array_get(limited_.get(), 0)));
        return JsonTree(json_pack("{s:O}", "anyOf", limited_.get()));
    }

private:
    bool has(const char* type) const { return std::find(types_.begin(), types_.end(), type) != types_.end(); }

    const Layouts& layouts_;
    std::vector<std::string> types_;
    JsonTree limited_ = list();
};

JsonTree values_taken(const Layouts& layouts, json_t* behaviour) {
    Choices choices(layouts);
    std::size_t index;
    json_t* said;
    json_array_foreach(behaviour, index, said) choices.add(said);
    return choices.schema();
}

bool is_carried(const PlaceNode& node) {
    return sentences_of(node.behaviours.front()) == std::vector<std::string>{"any value stays the same"};
}

bool is_reported_when_absent(json_t* behaviour) {
    std::size_t index;
    json_t* said;
    json_array_foreach(behaviour, index, said) {
        const char* const type = json_string_value(json_array_get(json_object_get(said, "of"), 0));
        if (std::string(type) == "absent" && json_object_get(said, "says") != nullptr) return true;
    }
    return false;
}

bool is_required(const PlaceNode& node) {
    return !node.behaviours.empty() &&
           std::all_of(node.behaviours.begin(), node.behaviours.end(), is_reported_when_absent);
}

// Names of entries. Those of a bounded list are numbers of at most this; all bounded lists have the same bound.
constexpr json_int_t kMostEntries = 65535;
constexpr const char* kAboveMostEntries =
    "^0*(?:[1-9][0-9]{5}|[7-9][0-9]{4}|6[6-9][0-9]{3}|65[6-9][0-9]{2}|655[4-9][0-9]|6553[6-9])";
constexpr const char* kNoNumber = "^(?!0*[1-9]|max_instance$)";

class Maker {
public:
    Maker(const Layouts& layouts, bool is_closed) : layouts_(layouts), is_closed_(is_closed) {}

    JsonTree make(const PlaceNode& node) {
        if (node.is_whole || node.is.empty()) return leaf(node);
        if (node.is == "array") return array(node);
        if (node.is == "list") return numbered_list(node);
        if (node.is == "names") return names(node);
        return object(node);
    }

private:
    JsonTree leaf(const PlaceNode& node) {
        JsonTree schema = empty();
        const JsonTree forms = forms_of(node);
        if (json_array_size(forms.get()) == 1 && !node.is_whole)
            json_object_update(schema.get(), json_array_get(forms.get(), 0));
        else if (json_array_size(forms.get()) > 1 && !node.is_whole)
            json_object_set(schema.get(), "anyOf", forms.get());
        describe(schema, node);
        if (text::is_secret_name(node.step)) {
            set(schema, "writeOnly", JsonTree(json_true()));
            set(schema, "format", text("password"));
        }
        return schema;
    }

    // What each form takes, each once; where one takes everything, that alone.
    JsonTree forms_of(const PlaceNode& node) {
        JsonTree forms = list();
        for (json_t* behaviour : node.behaviours) {
            JsonTree form = values_taken(layouts_, behaviour);
            if (json_object_size(form.get()) == 0) return JsonTree(json_pack("[o]", form.release()));
            bool is_known = false;
            std::size_t index;
            json_t* known;
            json_array_foreach(forms.get(), index, known) is_known = is_known || json_equal(known, form.get()) != 0;
            if (!is_known) append(forms, std::move(form));
        }
        return forms;
    }

    void describe(const JsonTree& schema, const PlaceNode& node) {
        if (!node.counterparts.empty())
            set(schema, "description", text((is_carried(node) ? "carried to " : "becomes ") + node.counterparts));
        else if (!node.behaviours.empty() && node.is.empty())
            set(schema, "description", text("dropped"));
    }

    JsonTree array(const PlaceNode& node) {
        JsonTree schema(json_pack("{s:s}", "type", "array"));
        if (const PlaceNode* const entry = node.find("*")) set(schema, "items", make(*entry));
        return schema;
    }

    JsonTree numbered_list(const PlaceNode& node) {
        JsonTree length = empty();
        if (!node.carries_others) length.reset(json_pack("{s:s, s:i}", "type", "integer", "minimum", 0));
        JsonTree schema(json_pack("{s:s, s:{s:o}}", "type", "object", "properties", "max_instance", length.release()));
        if (is_closed_) set(schema, "additionalProperties", JsonTree(json_false()));
        for (const auto& inner : node.inner)
            if (inner->step == "*")
                add_entries(schema, make(*inner), node.entries);
            else
                json_object_set_new(json_object_get(schema.get(), "properties"), inner->step.c_str(),
                                    make(*inner).release());
        if (json_integer_value(json_object_get(node.entries, "to")) == kMostEntries)
            set(schema, "propertyNames", JsonTree(json_pack("{s:{s:s}}", "not", "pattern", kAboveMostEntries)));
        return schema;
    }

    static bool says(json_t* entries, const char* what, const char* word) {
        const char* const said = json_string_value(json_object_get(entries, what));
        return said != nullptr && std::string(said) == word;
    }

    void add_entries(const JsonTree& schema, JsonTree entry, json_t* entries) {
        if (says(entries, "names", "any")) return set(schema, "additionalProperties", std::move(entry));
        const char* const names = json_object_get(entries, "from") == nullptr ? "^[1-9][0-9]*$" : "^[0-9]+$";
        set(schema, "patternProperties", JsonTree(json_pack("{s:o}", names, entry.release())));
        if (says(entries, "names", "numbers"))
            json_object_set_new(json_object_get(schema.get(), "patternProperties"), kNoNumber, json_false());
    }

    // Entries that say their type have members by it.
    JsonTree names(const PlaceNode& node) {
        JsonTree schema(json_pack("{s:s}", "type", "object"));
        if (const PlaceNode* const entry = node.find("*")) {
            set(schema, "additionalProperties", make(*entry));
            return schema;
        }
        JsonTree types = list();
        JsonTree all = list();
        for (const auto& inner : node.inner) {
            for (const std::string& type : types_of(inner->step)) {
                append(types, text(type));
                append(all, JsonTree(json_pack("{s:{s:{s:{s:s}}, s:[s]}, s:o}", "if", "properties", "type", "const",
                                               type.c_str(), "required", "type", "then", make(*inner).release())));
            }
        }
        JsonTree entry(json_pack("{s:s, s:{s:{s:o}}, s:o}", "type", "object", "properties", "type", "enum",
                                 types.release(), "allOf", all.release()));
        set(schema, "additionalProperties", std::move(entry));
        return schema;
    }

    JsonTree object(const PlaceNode& node) {
        JsonTree schema(json_pack("{s:s}", "type", "object"));
        JsonTree properties = empty();
        JsonTree required = list();
        for (const auto& inner : node.inner) {
            if (inner->step == "*") {
                json_object_set_new(schema.get(), "patternProperties",
                                    json_pack("{s:o}", "^[1-9][0-9]*$", make(*inner).release()));
                continue;
            }
            json_object_set_new(properties.get(), inner->step.c_str(), make(*inner).release());
            if (is_required(*inner)) append(required, text(inner->step));
        }
        if (json_object_size(properties.get()) > 0) set(schema, "properties", std::move(properties));
        if (json_array_size(required.get()) > 0) set(schema, "required", std::move(required));
        close(schema, node);
        return schema;
    }

    void close(const JsonTree& schema, const PlaceNode& node) {
        if (is_closed_ && !node.carries_others) set(schema, "additionalProperties", JsonTree(json_false()));
    }

    const Layouts& layouts_;
    bool is_closed_;
};

// Objects that are the same in several places stand once, under "$defs".
class Sharing {
public:
    JsonTree share(JsonTree schema) {
        count(schema.get());
        replace_inside(schema.get());
        if (json_object_size(definitions_.get()) > 0) set(schema, "$defs", std::move(definitions_));
        return schema;
    }

private:
    static constexpr std::size_t kLeast = 300;  // bytes that are worth a name

    // Of every object whether it is a schema or not; what is no schema is of no use alone and comes in one.
    void count(json_t* value) {
        const char* name;
        json_t* inner;
        if (json_is_object(value) && json_object_get(value, "type") != nullptr) {
            const std::string written = shown(value);
            if (written.size() >= kLeast && ++times_[written] > 1) return;
        }
        json_object_foreach(value, name, inner) count(inner);
        std::size_t index;
        json_array_foreach(value, index, inner) count(inner);
    }

    void replace_inside(json_t* value) {
        const char* name;
        json_t* inner;
        json_object_foreach(value, name, inner) {
            if (json_t* const shared = shared_in_place_of(inner))
                json_object_set_new(value, name, shared);
            else
                replace_inside(inner);
        }
        for (std::size_t index = 0; index < json_array_size(value); ++index) {
            if (json_t* const shared = shared_in_place_of(json_array_get(value, index)))
                json_array_set_new(value, index, shared);
            else
                replace_inside(json_array_get(value, index));
        }
    }

    json_t* shared_in_place_of(json_t* value) {
        if (!json_is_object(value) || !json_is_string(json_object_get(value, "type"))) return nullptr;
        const std::string written = shown(value);
        const auto times = times_.find(written);
        if (times == times_.end() || times->second < 2) return nullptr;
        const auto [known, is_new] = names_.try_emplace(written, "shared" + std::to_string(names_.size() + 1));
        const std::string name = known->second;
        if (is_new) {
            JsonTree definition(json_deep_copy(value));
            replace_inside(definition.get());
            json_object_set_new(definitions_.get(), name.c_str(), definition.release());
        }
        return json_pack("{s:s}", "$ref", ("#/$defs/" + name).c_str());
    }

    std::map<std::string, int> times_;
    std::map<std::string, std::string> names_;
    JsonTree definitions_ = empty();
};

}  // namespace

JsonTree schema_of(const Layouts& layouts, const PlaceNode& node, const std::string& title, bool is_closed) {
    JsonTree schema(
        json_pack("{s:s, s:s}", "$schema", "https://json-schema.org/draft/2020-12/schema", "title", title.c_str()));
    JsonTree made = Maker(layouts, is_closed).make(node);
    json_object_update(schema.get(), made.get());
    return Sharing().share(std::move(schema));
}

}  // namespace kcnvrt
