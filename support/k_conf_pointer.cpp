// JSON Pointers: written, and read.
#include "k_conf_pointer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "k_conf_problem.h"
#include "k_conf_tree.h"
#include "shortage.h"

namespace kcnvrt::conf {

namespace {

// The end of the name at the front of `rest`.
size_t name_length(std::string_view rest) {
    return std::min(rest.find('/'), rest.size());
}

// Writes a name without its escapes. Null when one is neither "~0" nor "~1".
char* unescape(std::string_view name, char* out) {
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] != '~') {
            *out++ = name[i];
        } else if (++i < name.size() && (name[i] == '0' || name[i] == '1')) {
            *out++ = name[i] == '0' ? '~' : '/';
        } else {
            return nullptr;
        }
    }
    return out;
}

}  // namespace

bool PointerWriter::push(std::string_view name) {
    if (name.size() > SIZE_MAX / 4 || !text_.has_room(1 + 2 * name.size())) return false;
    text_.add('/');
    for (const char c : name) {
        const bool escaped = c == '~' || c == '/';
        if (escaped) text_.add('~');
        text_.add(!escaped ? c : c == '~' ? '0' : '1');
    }
    return true;
}

bool PointerWriter::push(size_t index) {
    char digits[20];
    const char* end = std::to_chars(digits, digits + sizeof digits, index).ptr;
    return push({digits, static_cast<size_t>(end - digits)});
}

const char* Pointer::read(std::string_view text) {
    if (text.empty()) return nullptr;
    if (text.front() != '/') return problem::kNoPointer;
    const auto count = static_cast<size_t>(std::count(text.begin(), text.end(), '/'));

    // One allocation: the names, then their text.
    if (text.size() > SIZE_MAX / (2 * sizeof(std::string_view))) return problem::kNoMemory;
    auto* names = static_cast<std::string_view*>(noted(malloc(count * sizeof(std::string_view) + text.size())));
    names_.reset(names);
    if (names == nullptr) return problem::kNoMemory;

    auto* out = reinterpret_cast<char*>(names + count);
    while (!text.empty()) {
        text.remove_prefix(1);
        const size_t length = name_length(text);
        char* end = unescape({text.data(), length}, out);
        if (end == nullptr) return problem::kNoPointer;
        new (names + size_++) std::string_view{out, static_cast<size_t>(end - out)};
        out = end;
        text.remove_prefix(length);
    }
    return nullptr;
}

bool Pointer::is_inside(const Pointer& other) const {
    return size_ > other.size_ && std::equal(other.names_.get(), other.names_.get() + other.size_, names_.get());
}

bool read_index(std::string_view name, size_t* index) {
    if (name.empty() || (name.front() == '0' && name.size() > 1)) return false;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, *index);
    return error == std::errc{} && stop == end;
}

json_t* child(json_t* container, std::string_view name) {
    size_t index = 0;
    if (is_object(container)) return member(container, name);
    return read_index(name, &index) ? json_array_get(container, index) : nullptr;
}

}  // namespace kcnvrt::conf
