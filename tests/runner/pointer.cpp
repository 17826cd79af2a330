// Pointers are read step by step.
#include "pointer.h"

#include <string>

namespace {

// A name without its escapes; false when one is neither "~0" nor "~1".
bool unescape(std::string_view escaped, std::string& name) {
    for (size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '~') {
            name += escaped[i];
        } else if (i + 1 < escaped.size() && (escaped[i + 1] == '0' || escaped[i + 1] == '1')) {
            name += escaped[++i] == '0' ? '~' : '/';
        } else {
            return false;
        }
    }
    return true;
}

bool is_index(const std::string& name) {
    constexpr size_t kMostDigits = 9;
    const bool has_digits = !name.empty() && name.find_first_not_of("0123456789") == std::string::npos;
    return has_digits && name.size() <= kMostDigits && (name == "0" || name.front() != '0');
}

const json_t* child(const json_t* container, const std::string& name) {
    if (json_is_object(container)) return json_object_getn(container, name.data(), name.size());
    return is_index(name) ? json_array_get(container, std::stoul(name)) : nullptr;
}

}  // namespace

const json_t* at_pointer(const json_t* tree, std::string_view pointer) {
    while (tree != nullptr && !pointer.empty()) {
        if (pointer.front() != '/') return nullptr;
        pointer.remove_prefix(1);
        const std::string_view escaped = pointer.substr(0, pointer.find('/'));
        std::string name;
        tree = unescape(escaped, name) ? child(tree, name) : nullptr;
        pointer.remove_prefix(escaped.size());
    }
    return tree;
}
