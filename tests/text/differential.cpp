// A text is parsed, written and looked into by both, token by token where they may differ.
#include "differential.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "json/position.h"
#include "owners.h"
#include "tree.h"

namespace kcnvrt::text {

namespace {

constexpr size_t kMostPointers = 300;

size_t flags_of(ReadOptions options) {
    return JSON_REJECT_DUPLICATES | (options.any_value ? JSON_DECODE_ANY : 0) |
           (options.nul_in_strings ? JSON_ALLOW_NUL : 0);
}

size_t flags_of(Layout layout) {
    return layout.compact ? JSON_COMPACT : JSON_INDENT(layout.indent);
}

Json parse(std::string_view text, size_t flags) {
    return Json{json_loadb(text.empty() ? "" : text.data(), text.size(), flags, nullptr)};
}

bool has_nul_outside_strings(std::string_view text) {
    bool inside = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (inside && text[i] == '\\') {
            ++i;
        } else if (text[i] == '"') {
            inside = !inside;
        } else if (!inside && text[i] == '\0') {
            return true;
        }
    }
    return false;
}

bool is_of_number(char byte) {
    return std::strchr("0123456789+-.eE", byte) != nullptr && byte != '\0';
}

// A string, a number or a single byte at the start.
std::string_view take_token(std::string_view& text) {
    size_t length = 1;
    if (text[0] == '"') {
        while (text[length] != '"') length += text[length] == '\\' ? 2 : 1;
        ++length;
    } else if (is_of_number(text[0])) {
        while (length < text.size() && is_of_number(text[length])) ++length;
    }
    const std::string_view token = text.substr(0, length);
    text.remove_prefix(length);
    return token;
}

bool is_real(std::string_view token) {
    return is_of_number(token[0]) && token.find_first_of(".eE") != std::string_view::npos;
}

bool is_same_real(std::string_view ours, std::string_view theirs) {
    return is_real(ours) && is_real(theirs) && ours.size() <= theirs.size() &&
           std::strtod(std::string{ours}.c_str(), nullptr) == std::strtod(std::string{theirs}.c_str(), nullptr);
}

// Equal but for reals, which are as long at most and mean the same.
bool are_alike(std::string_view ours, std::string_view theirs) {
    while (!ours.empty() && !theirs.empty()) {
        const std::string_view our_token = take_token(ours);
        const std::string_view their_token = take_token(theirs);
        if (our_token != their_token && !is_same_real(our_token, their_token)) return false;
    }
    return ours.empty() && theirs.empty();
}

std::string written_alike(const json_t* tree, Layout layout) {
    Buffer ours;
    if (!ours.append("before") || !write(tree, layout, ours)) return "not written";
    const std::string theirs = "before" + dumped(tree, flags_of(layout));
    if (!are_alike(ours.view(), theirs)) return "written as " + std::string{ours.view()} + "\ninstead of " + theirs;
    return "";
}

struct Pointed {
    std::string pointer;
    const json_t* value;
};

std::string escaped(std::string_view name) {
    std::string token;
    for (const char byte : name) token += byte == '~' ? "~0" : byte == '/' ? "~1" : std::string{byte};
    return token;
}

void list_values(const std::string& pointer, json_t* value, std::vector<Pointed>& list) {
    if (list.size() == kMostPointers) return;
    list.push_back({pointer, value});
    for (void* at = json_object_iter(value); at != nullptr; at = json_object_iter_next(value, at)) {
        const std::string name{json_object_iter_key(at), json_object_iter_key_len(at)};
        list_values(pointer + "/" + escaped(name), json_object_iter_value(at), list);
    }
    for (size_t i = 0; i < json_array_size(value); ++i)
        list_values(pointer + "/" + std::to_string(i), json_array_get(value, i), list);
}

bool is_same_spot(Spot one, Spot other) {
    return one.offset == other.offset && one.line == other.line && one.column == other.column;
}

std::string found_alike(std::string_view text, json_t* tree, Finding& finding) {
    std::vector<Pointed> list;
    list_values("", tree, list);
    // In the opposite of the text's order, and with one that is not there.
    std::vector<Sought> sought(list.size() + 1);
    for (size_t i = 0; i < list.size(); ++i) sought[i].pointer = list[list.size() - 1 - i].pointer;
    sought.back().pointer = "/no such member";
    if (!find_values(text, sought.data(), sought.size())) return "no memory to find values";
    if (sought.back().spot.line != 0) return "found what is not there";
    for (size_t i = 0; i < list.size(); ++i) {
        const Pointed& pointed = list[list.size() - 1 - i];
        const Sought& found = sought[i];
        if (found.spot.line == 0) return "nothing found at " + pointed.pointer;
        const Json value = parse(text.substr(found.spot.offset, found.length), JSON_DECODE_ANY | JSON_ALLOW_NUL);
        if (dumped(value.get(), JSON_COMPACT) != dumped(pointed.value, JSON_COMPACT))
            return "something else found at " + pointed.pointer;
        if (!is_same_spot(found.spot, spot_at(text, found.spot.offset))) return "wrong spot of " + pointed.pointer;
    }
    finding.values = list.size();
    return "";
}

std::string refused_properly(std::string_view text, const ReadError& error) {
    if (error.spot.offset > text.size()) return "the problem's spot is outside the text";
    if (!is_same_spot(error.spot, spot_at(text, error.spot.offset))) return "the problem's line or column is wrong";
    if (error.kind == ReadErrorKind::kOutOfMemory) return "refused for lack of memory";
    return "";
}

std::string written(const Json& tree) {
    return tree ? dumped(tree.get(), JSON_COMPACT) : "";
}

// Of every eighth text, since that takes longer than all the rest.
bool is_read_alike_when_large(std::string_view text, const Json& sure) {
    return text.size() % 8 != 0 || written(Json{read_if_sure(as_large(text))}) == written(sure);
}

}  // namespace

Finding compare_with_jansson(std::string_view text, ReadOptions options, Layout layout) {
    Finding finding;
    ReadError error;
    const Json ours{read(text, options, error)};
    const Json sure{read_if_sure(text)};
    const Json theirs = parse(text, flags_of(options));
    if (!is_read_alike_when_large(text, sure)) return {"read otherwise as a part of a large text"};
    finding.is_accepted = ours != nullptr;
    finding.is_sure = sure != nullptr;
    finding.has_nul = ours == nullptr && error.kind == ReadErrorKind::kByteNul;
    if (ours == nullptr) finding.problem = refused_properly(text, error);
    if (!finding.problem.empty()) return finding;
    if (finding.has_nul != has_nul_outside_strings(text)) {
        finding.problem = "a NUL byte outside strings is not refused as such";
    } else if (finding.has_nul) {
        return finding;
    } else if ((ours == nullptr) != (theirs == nullptr)) {
        finding.problem = theirs == nullptr ? "accepted, but Jansson refuses it" : "refused, but Jansson accepts it";
    } else if (ours != nullptr && dumped(ours.get(), JSON_COMPACT) != dumped(theirs.get(), JSON_COMPACT)) {
        finding.problem = "read as " + dumped(ours.get(), JSON_COMPACT);
    }
    if (ours == nullptr || !finding.problem.empty()) return finding;
    finding.problem = written_alike(ours.get(), layout);
    if (finding.problem.empty()) finding.problem = found_alike(text, ours.get(), finding);
    return finding;
}

}  // namespace kcnvrt::text
