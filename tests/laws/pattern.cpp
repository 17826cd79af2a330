// Patterns are cut at their separators, and matched from left to right.
#include "pattern.h"

#include <algorithm>

namespace {

std::vector<std::string> pieces_of(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find(separator, at), text.size());
        pieces.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return pieces;
}

bool is_one_of(const std::string& names, const std::string& name) {
    const auto each = pieces_of(names, '|');
    return std::find(each.begin(), each.end(), name) != each.end();
}

bool fits(const std::string& wanted, const Step& step) {
    if (wanted == "*") return true;
    if (wanted.size() < 2 || wanted.front() != '[') return is_one_of(wanted, step.name);
    const char* type = json_string_value(json_object_get(step.value, "type"));
    return type != nullptr && is_one_of(wanted.substr(1, wanted.size() - 2), type);
}

bool match(const std::vector<std::string>& names, size_t name, const Path& path, size_t step) {
    if (name == names.size()) return step == path.size();
    if (names[name] == "**") {
        for (size_t skipped = step; skipped <= path.size(); ++skipped)
            if (match(names, name + 1, path, skipped)) return true;
        return false;
    }
    return step < path.size() && fits(names[name], path[step]) && match(names, name + 1, path, step + 1);
}

}  // namespace

Pattern::Pattern(const std::string& text) : names_{pieces_of(text, '/')} {}

bool Pattern::matches(const Path& path) const {
    return match(names_, 0, path, 0);
}

Pattern Pattern::parent() const {
    Pattern parent;
    parent.names_.assign(names_.begin(), names_.end() - 1);
    return parent;
}

std::vector<std::string> Pattern::last_names() const {
    return pieces_of(names_.back(), '|');
}

bool Pattern::begins_in(json_t* document) const {
    for (size_t i = 0; i + 1 < names_.size() && document != nullptr; ++i) {
        if (names_[i].find_first_of("*[|") != std::string::npos) return true;
        document = json_object_get(document, names_[i].c_str());
    }
    return document != nullptr;
}
