// The members of a case, compared with what its kind of function takes.
#include "case_defects.h"

#include <algorithm>

#include "function_kinds.h"
#include "symbol.h"

namespace {

bool are_messages(const json_t* value) {
    for (size_t i = 0; i < json_array_size(value); ++i) {
        const json_t* message = json_array_get(value, i);
        if (json_array_size(message) != 2 || !json_is_string(json_array_get(message, 0)) ||
            !json_is_string(json_array_get(message, 1))) {
            return false;
        }
    }
    return json_is_array(value);
}

bool are_pointers(const json_t* value) {
    for (size_t i = 0; i < json_array_size(value); ++i) {
        const json_t* pointer = json_array_get(value, i);
        if (!json_is_string(pointer) && !json_is_null(pointer)) return false;
    }
    return json_is_array(value);
}

bool is_function(const char* name) {
    return name != nullptr && address_of(name) != nullptr;
}

std::string defect_of(const MemberRule& rule, const json_t* value) {
    const std::string name = std::string{"\""} + rule.name + "\"";
    if (value == nullptr) return rule.need == Need::kRequired ? name + " is missing" : "";
    switch (rule.type) {
        case Type::kTree:
            return "";
        case Type::kText:
            return json_is_string(value) ? "" : name + " is not a string";
        case Type::kInteger:
            return json_is_integer(value) ? "" : name + " is not an integer";
        case Type::kSwitch:
            return json_is_boolean(value) ? "" : name + " is not true or false";
        case Type::kMessages:
            return are_messages(value) ? "" : name + " is not an array of [function, text]";
        case Type::kPointers:
            return are_pointers(value) ? "" : name + " is not an array of texts and nulls";
        case Type::kHandler:
            return is_function(json_string_value(value)) ? "" : name + " is not a function of the libraries";
    }
    return "";
}

bool is_known(const Kind& kind, const std::string& name) {
    const auto is_it = [&name](const MemberRule& rule) { return name == rule.name; };
    return name == "case" || name == "call" || std::any_of(kind.members.begin(), kind.members.end(), is_it);
}

}  // namespace

std::vector<std::string> defects_of(const json_t* data) {
    if (!json_is_object(data)) return {"a case is an object"};
    const char* call = json_string_value(json_object_get(data, "call"));
    if (json_string_length(json_object_get(data, "case")) == 0) return {"\"case\" is missing or not a sentence"};
    if (call == nullptr) return {"\"call\" is missing or not a name"};
    if (!is_function(call)) return {std::string{"no function of the libraries has the name \""} + call + "\""};

    const Kind& kind = kind_of(call);
    std::vector<std::string> defects;
    for (const MemberRule& rule : kind.members) {
        const std::string defect = defect_of(rule, json_object_get(data, rule.name));
        if (!defect.empty()) defects.push_back(defect);
    }
    const char* name;
    json_t* value;
    json_object_foreach(const_cast<json_t*>(data), name, value) {
        if (!is_known(kind, name)) defects.push_back(std::string{"\""} + name + "\" is no member of a case of " + call);
    }
    return defects;
}
