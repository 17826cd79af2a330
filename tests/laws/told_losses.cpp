// Both sides become lines, "gone /a/b", "/a/b is now 1" and "/a gets b: 2", which are compared as sets.
#include "told_losses.h"

#include <k_cnvrt_text.h>

#include <algorithm>
#include <memory>
#include <set>
#include <vector>

namespace {

using Lines = std::set<std::string>;

struct FreeResult {
    void operator()(k_text_result_t* result) const { k_text_free(result); }
};
using Result = std::unique_ptr<k_text_result_t, FreeResult>;

std::string sorted_text_of(const json_t* value) {
    char* const text = json_dumps(value, JSON_COMPACT | JSON_SORT_KEYS | JSON_ENCODE_ANY);
    const std::string copy = text;
    std::free(text);
    return copy;
}

std::string gone(const std::string& pointer) {
    return "gone " + pointer;
}

std::string now(const std::string& pointer, const json_t* value) {
    return pointer + " is now " + sorted_text_of(value);
}

std::string gets(const std::string& pointer, const std::string& name, const json_t* value) {
    return pointer + " gets " + name + ": " + sorted_text_of(value);
}

std::string below(const std::string& pointer, const std::string& name) {
    std::string token = pointer + "/";
    for (const char character : name)
        token += character == '~' ? "~0" : character == '/' ? "~1" : std::string(1, character);
    return token;
}

void compare(json_t* before, json_t* after, const std::string& pointer, Lines& lines);

void compare_objects(json_t* before, json_t* after, const std::string& pointer, Lines& lines) {
    const char* name;
    json_t* value;
    json_object_foreach(before, name, value) compare(value, json_object_get(after, name), below(pointer, name), lines);
    json_object_foreach(after, name, value) {
        if (json_object_get(before, name) == nullptr) lines.insert(gets(pointer, name, value));
    }
}

void compare_arrays(json_t* before, json_t* after, const std::string& pointer, Lines& lines) {
    for (size_t i = 0; i < json_array_size(before); ++i)
        compare(json_array_get(before, i), json_array_get(after, i), below(pointer, std::to_string(i)), lines);
    for (size_t i = json_array_size(before); i < json_array_size(after); ++i)
        lines.insert(gets(pointer, "", json_array_get(after, i)));
}

void compare(json_t* before, json_t* after, const std::string& pointer, Lines& lines) {
    if (after == nullptr)
        lines.insert(gone(pointer));
    else if (json_is_object(before) && json_is_object(after))
        compare_objects(before, after, pointer, lines);
    else if (json_is_array(before) && json_is_array(after))
        compare_arrays(before, after, pointer, lines);
    else if (json_equal(before, after) == 0)
        lines.insert(now(pointer, after));
}

Result ask(Side side, const std::string& text, bool is_dsl) {
    k_text_request_t request = {};
    request.size = sizeof request;
    request.operation = K_TEXT_LOSSES;
    request.flags = (side == Side::kOld ? K_TEXT_TOWARDS_NEW : K_TEXT_TOWARDS_OLD) | K_TEXT_FORCE | K_TEXT_SHOW_SECRETS;
    if (is_dsl) request.flags |= K_TEXT_DSL_VLAN;
    request.indent = K_TEXT_COMPACT;
    request.text = text.data();
    request.text_length = text.size();
    return Result{k_text_run(&request)};
}

bool is_inside(const std::string& pointer, const std::vector<std::string>& outer) {
    return std::any_of(outer.begin(), outer.end(),
                       [&](const std::string& each) { return pointer.starts_with(each + "/"); });
}

void add_loss(const k_text_loss_t& loss, std::vector<std::string>& whole, Lines& lines) {
    const std::string pointer = loss.pointer;
    const Tree after{loss.after == nullptr ? nullptr : json_loads(loss.after, JSON_DECODE_ANY, nullptr)};
    if (loss.kind == K_TEXT_RENUMBERED) {
        lines.insert("renumbered " + pointer);
    } else if (loss.kind == K_TEXT_DEFAULTED) {
        const char* name;
        json_t* value;
        json_object_foreach(after.get(), name, value) lines.insert(gets(pointer, name, value));
        for (size_t i = 0; i < json_array_size(after.get()); ++i)
            lines.insert(gets(pointer, "", json_array_get(after.get(), i)));
    } else if (!is_inside(pointer, whole)) {
        lines.insert(after == nullptr ? gone(pointer) : now(pointer, after.get()));
        whole.push_back(pointer);
    }
}

Lines told(const Result& result) {
    Lines lines;
    std::vector<std::string> whole;  // what is inside these is told with them
    k_text_loss_t loss;
    loss.size = sizeof loss;
    for (size_t i = 0; k_text_loss(result.get(), i, &loss) == 0; ++i) add_loss(loss, whole, lines);
    return lines;
}

void append_missing(const Lines& from, const Lines& lines, const char* title, std::string& defect) {
    for (const std::string& line : from)
        if (!lines.contains(line)) defect += std::string("\n  ") + title + line;
}

}  // namespace

std::string defect_of_told_losses(Side side, json_t* document, bool is_dsl, json_t* back) {
    Lines expected;
    compare(document, back, "", expected);
    const Result result = ask(side, text_of(document), is_dsl);
    if (k_text_status(result.get()) != K_TEXT_CONVERTED) return "there is no list of losses";
    const Lines lines = told(result);
    std::string defect;
    append_missing(expected, lines, "not told: ", defect);
    append_missing(lines, expected, "told: ", defect);
    return defect;
}
