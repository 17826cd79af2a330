// One kind after the other: how its functions are called, which they are, and what their cases say.
#include "function_kinds.h"

#include <algorithm>

#include "k_cnvrt.h"
#include "k_conf.h"
#include "symbol.h"

namespace {

// Calls, each with the inputs, the name that the case calls and an error record that may be null.

Returned call_section_handler(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const int result = symbol<k_cnvrt_handler_t>(name)(in.tree("source"), destination.get(), err);
    return {result, std::move(destination)};
}

Returned call_field_helper(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const auto helper = symbol<decltype(&json_string_set_safe)>(name);
    const int result = helper(destination.get(), in.text("key"), in.tree("value"), in.function(), __LINE__, err);
    return {result, std::move(destination)};
}

Returned call_string_set_def(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const auto helper = symbol<decltype(&json_string_set_def)>(name);
    const int result =
        helper(destination.get(), in.text("key"), in.tree("value"), in.text("default"), in.function(), __LINE__, err);
    return {result, std::move(destination)};
}

Returned call_to_old(const Inputs& in, const char* name, k_err_t* err) {
    return {0, Tree{symbol<decltype(&k_cnvrt_to_old)>(name)(in.tree("source"), in.flags(), err)}};
}

Returned call_to_new(const Inputs& in, const char* name, k_err_t* err) {
    const auto to_new = symbol<decltype(&k_cnvrt_to_new)>(name);
    return {0, Tree{to_new(in.tree("source"), in.tree("base"), in.flags(), err)}};
}

Returned call_section_to_old(const Inputs& in, const char* name, k_err_t* err) {
    const auto to_old = symbol<decltype(&k_cnvrt_get_section_to_old)>(name);
    return {0, Tree{to_old(in.text("name"), in.tree("source"), err)}};
}

Returned call_section_to_new(const Inputs& in, const char* name, k_err_t* err) {
    const auto to_new = symbol<decltype(&k_cnvrt_get_section_to_new)>(name);
    return {0, Tree{to_new(in.text("name"), in.tree("source"), in.tree("base"), in.flags(), err)}};
}

Returned call_section_parser(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const auto parser = symbol<decltype(&json_section_parser)>(name);
    const auto handler = symbol<k_cnvrt_handler_t>(in.text("handler"));
    const int result =
        parser(in.tree("source"), in.text("name"), destination.get(), err, in.number("is_array"), handler);
    return {result, std::move(destination)};
}

Returned call_services_parser(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const auto parser = symbol<decltype(&json_services_parser)>(name);
    const auto handler = symbol<k_cnvrt_handler_t>(in.text("handler"));
    const int result = parser(in.tree("source"), in.text("name"), destination.get(), handler, in.number("kind"), err);
    return {result, std::move(destination)};
}

Returned call_number_of_object(const Inputs& in, const char* name, k_err_t*) {
    return {symbol<decltype(&getMaxKey)>(name)(in.tree("source")), nullptr};
}

Returned call_sorted_keys(const Inputs& in, const char* name, k_err_t*) {
    int count = -2;  // no count that the function could set
    char** keys = symbol<decltype(&getSortedKeys)>(name)(in.tree("source"), &count);
    Tree output{keys == nullptr ? nullptr : json_array()};
    for (int i = 0; keys != nullptr && i < count; ++i) json_array_append_new(output.get(), json_string(keys[i]));
    freeArrayOfString(keys, count);
    return {count, std::move(output)};
}

Returned call_set_max_instance(const Inputs& in, const char* name, k_err_t*) {
    Tree destination = in.destination();
    const auto count = static_cast<uint32_t>(json_integer_value(in.tree("count")));
    symbol<decltype(&json_set_max_instance)>(name)(destination.get(), count);
    return {0, std::move(destination)};
}

Returned call_list_to_string(const Inputs& in, const char* name, k_err_t* err) {
    Tree destination = in.destination();
    const auto to_string = symbol<decltype(&multiinstanse_to_string)>(name);
    const int result = to_string(destination.get(), in.text("key"), in.tree("list"), err);
    return {result, std::move(destination)};
}

Returned call_remote_element(const Inputs& in, const char* name, k_err_t* err) {
    int errors = in.number("errors");
    Tree output{symbol<json_t* (*)(json_t*, int*, k_err_t*)>(name)(in.tree("source"), &errors, err)};
    return {errors, std::move(output)};
}

Returned call_find_branch(const Inputs& in, const char* name, k_err_t*) {
    const auto find = symbol<decltype(&k_conf_find_branch)>(name);
    return {0, Tree{json_incref(find(in.tree("source"), in.text("path"), 0))}};
}

Returned call_diff(const Inputs& in, const char* name, k_err_t* err) {
    const auto diff = symbol<decltype(&k_conf_diff_set2)>(name);
    return {0, Tree{diff(in.tree("base"), in.tree("candidate"), 0, static_cast<unsigned>(in.number("flag")), err)}};
}

Returned call_apply(const Inputs& in, const char* name, k_err_t* err) {
    return {0, Tree{symbol<decltype(&k_conf_apply)>(name)(in.tree("base"), in.tree("difference"), err)}};
}

constexpr MemberRule kSource{"source", Type::kTree};
constexpr MemberRule kBase{"base", Type::kTree};
constexpr MemberRule kDestination{"destination", Type::kTree};
constexpr MemberRule kValue{"value", Type::kTree};
constexpr MemberRule kKey{"key", Type::kText, Need::kRequired};
constexpr MemberRule kName{"name", Type::kText};
constexpr MemberRule kDefault{"default", Type::kText};
constexpr MemberRule kFunction{"function", Type::kText};
constexpr MemberRule kHandler{"handler", Type::kHandler, Need::kRequired};
constexpr MemberRule kFlags{"flags", Type::kInteger};
constexpr MemberRule kResult{"result", Type::kInteger};
constexpr MemberRule kOutput{"output", Type::kTree, Need::kRequired};
constexpr MemberRule kOrdered{"ordered", Type::kSwitch};
constexpr MemberRule kMessages{"messages", Type::kMessages};
constexpr MemberRule kPointers{"pointers", Type::kPointers};
constexpr MemberRule kStdout{"stdout", Type::kText};

const Kind kSectionHandler{call_section_handler,
                           Places::kToLocate,
                           {},
                           {kSource, kDestination, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}};

// clang-format off
const Kind kKinds[] = {
    {call_field_helper, Places::kNone,
     {"json_integer_old_set_safe", "json_boolean_old_set_safe", "json_string_old_set_safe", "json_string_set_password_old",
      "json_integer_set_safe", "json_boolean_set_safe", "json_string_set_safe", "json_string_set_password"},
     {kKey, kValue, kDestination, kFunction, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_string_set_def, Places::kNone, {"json_string_set_def"},
     {kKey, kValue, kDefault, kDestination, kFunction, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_to_old, Places::kLocated, {"k_cnvrt_to_old"}, {kSource, kFlags, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_to_new, Places::kLocated, {"k_cnvrt_to_new"}, {kSource, kBase, kFlags, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_section_to_old, Places::kLocated, {"k_cnvrt_get_section_to_old"}, {kName, kSource, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_section_to_new, Places::kLocated, {"k_cnvrt_get_section_to_new"},
     {kName, kSource, kBase, kFlags, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_section_parser, Places::kToLocate, {"json_section_parser"},
     {kName, kSource, kDestination, {"is_array", Type::kInteger}, kHandler, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_services_parser, Places::kToLocate, {"json_services_parser"},
     {kName, kSource, kDestination, {"kind", Type::kInteger}, kHandler, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_number_of_object, Places::kNone, {"getMaxKey", "getNumberOfEntries"}, {kSource, kResult, kStdout}},
    {call_sorted_keys, Places::kNone, {"getSortedKeys"}, {kSource, kResult, kOutput, kStdout}},
    {call_set_max_instance, Places::kNone, {"json_set_max_instance"},
     {kDestination, {"count", Type::kInteger, Need::kRequired}, kOutput, kOrdered, kStdout}},
    {call_list_to_string, Places::kNone, {"multiinstanse_to_string"},
     {kKey, {"list", Type::kTree}, kDestination, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_remote_element, Places::kToLocate, {"k_cnvrt_get_remote_from_old_element"},
     {kSource, {"errors", Type::kInteger}, kResult, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_find_branch, Places::kNone, {"k_conf_find_branch"},
     {kSource, {"path", Type::kText, Need::kRequired}, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_diff, Places::kLocated, {"k_conf_diff_set2"},
     {kBase, {"candidate", Type::kTree}, {"flag", Type::kInteger}, kOutput, kOrdered, kMessages, kPointers, kStdout}},
    {call_apply, Places::kLocated, {"k_conf_apply"}, {kBase, {"difference", Type::kTree}, kOutput, kOrdered, kMessages, kPointers, kStdout}},
};
// clang-format on

}  // namespace

const Kind& kind_of(const std::string& function) {
    for (const Kind& kind : kKinds) {
        if (std::find(kind.functions.begin(), kind.functions.end(), function) != kind.functions.end()) return kind;
    }
    return kSectionHandler;
}
