#include "sentences.h"

#include <new>
#include <string_view>

namespace kcnvrt {

namespace {

const char* text_at(json_t* object, const char* name) {
    return json_string_value(json_object_get(object, name));
}

bool is_word(json_t* text, const char* word) {
    return json_is_string(text) && std::string_view(json_string_value(text)) == word;
}

std::string types_in(json_t* said) {
    std::string list;
    std::size_t index;
    json_t* type;
    json_array_foreach(json_object_get(said, "of"), index, type) {
        const std::string name = json_string_value(type);
        list += (list.empty() ? "" : ", ") + (name == "string" ? std::string("text") : name);
    }
    return json_array_size(json_object_get(said, "of")) == 7 ? "any value" : list;
}

std::string list_of(json_t* values) {
    std::string list;
    std::size_t index;
    json_t* value;
    json_array_foreach(values, index, value) list += (index == 0 ? "" : ", ") + shown(value);
    return list;
}

std::string range(json_t* takes) {
    json_t* const from = json_object_get(takes, "from");
    json_t* const to = json_object_get(takes, "to");
    if (from != nullptr && to != nullptr) return " from " + shown(from) + " to " + shown(to);
    return from != nullptr ? " of at least " + shown(from) : " of at most " + shown(to);
}

// Of the types those values that cross.
std::string which(json_t* takes) {
    if (const char* const texts = text_at(takes, "texts")) return std::string(", ") + texts;
    if (json_t* const values = json_object_get(takes, "values")) return " " + list_of(values);
    if (text_at(takes, "of") != nullptr) return " with low 32 bits" + range(takes);
    if (json_object_get(takes, "from") != nullptr || json_object_get(takes, "to") != nullptr) return range(takes);
    return takes == nullptr ? "" : " of a certain form";
}

std::string becomes(json_t* result) {
    if (is_word(result, "another choice")) return " decides otherwise";
    if (is_word(result, "its member")) return " becomes the name of its member";
    return result == nullptr ? " is dropped" : " becomes " + shown(result);
}

std::string becomes_what_gives(json_t* member) {
    return std::string(" becomes what ") + json_string_value(member) + " gives";
}

std::string what_it_gives(json_t* gives) {
    if (gives == nullptr) return " stays the same";
    if (json_t* const member = json_object_get(gives, "member")) return becomes_what_gives(member);
    if (json_is_object(gives)) return becomes(json_object_get(gives, "value"));
    const std::string word = json_string_value(gives);
    if (word == "a choice") return " decides";
    if (word == "its member") return " becomes the name of its member";
    if (word == "something else") return " becomes something else";
    return word == "nothing" ? " is dropped" : " becomes " + word;
}

std::string exception(json_t* pair) {
    json_t* const member = json_array_get(pair, 2);
    return shown(json_array_get(pair, 0)) +
           (member == nullptr ? becomes(json_array_get(pair, 1)) : becomes_what_gives(member));
}

std::string exceptions(json_t* pairs, bool is_only, const char* before) {
    std::string list;
    std::size_t index;
    json_t* pair;
    json_array_foreach(pairs, index, pair) {
        if (index > 0)
            list += ", ";
        else if (!is_only)
            list += before;
        list += exception(pair);
    }
    return list;
}

std::string messages(json_t* says) {
    std::string list;
    std::size_t index;
    json_t* message;
    json_array_foreach(says, index, message) {
        std::string text = json_string_value(message);
        while (!text.empty() && text.back() == '\n') text.pop_back();
        list += (index == 0 ? "" : " or ") + text;
    }
    return list;
}

std::string sentence(json_t* said) {
    json_t* const takes = json_object_get(said, "takes");
    json_t* const says = json_object_get(said, "says");
    json_t* const values = json_object_get(takes, "values");
    json_t* const but = json_object_get(said, "but");
    const std::string types = types_in(said);
    json_t* const gives = json_object_get(said, "gives");
    if (types == "absent" && says == nullptr && is_word(json_object_get(gives, "value"), "a choice"))
        return "absent decides";
    if (types == "absent")
        return says != nullptr ? "absent is reported: " + messages(says)
                               : "absent" + what_it_gives(json_object_get(said, "gives"));
    if (values != nullptr && json_array_size(values) == 0) return types + " is reported: " + messages(says);
    // Where every value has a result of its own, that says which there are.
    const bool is_table = (gives == nullptr || is_word(gives, "something else")) && but != nullptr &&
                          values != nullptr && json_array_size(values) == json_array_size(but);
    std::string text = is_table ? types + ": " : types + which(takes) + what_it_gives(gives);
    text += exceptions(but, is_table, is_word(gives, "something else") ? ": " : ", but ");
    return says == nullptr ? text : text + "; others are reported: " + messages(says);
}

}  // namespace

std::string json_text(json_t* value, std::size_t flags) {
    std::string text;
    const auto append = [](const char* piece, std::size_t length, void* to) {
        static_cast<std::string*>(to)->append(piece, length);
        return 0;
    };
    if (json_dump_callback(value, append, &text, flags) != 0) throw std::bad_alloc();
    return text;
}

std::string shown(json_t* value) {
    return json_text(value, JSON_ENCODE_ANY | JSON_COMPACT);
}

std::vector<std::string> sentences_of(json_t* behaviour) {
    std::vector<std::string> sentences;
    std::size_t index;
    json_t* said;
    json_array_foreach(behaviour, index, said) sentences.push_back(sentence(said));
    return sentences;
}

}  // namespace kcnvrt
