// The JSON Patch between two documents.
#include <algorithm>

#include "k_conf_patch.h"
#include "k_conf_pointer.h"

namespace kcnvrt::conf {

namespace {

bool same(json_t* a, json_t* b) {
    return equal_trees(a, b, Numbers::kExact);
}

// How much text the paths of a patch may have together. Each repeats the names of all that is around its value, so that
// long names around many changes could otherwise fill any memory.
constexpr size_t kMostPathText = 64 << 20;

// Walks both documents side by side and writes down the operations. Every function returns false when memory runs out
// or the paths are too long together.
class Walk {
public:
    // An absent base is an addition, an absent candidate a removal.
    bool compare(json_t* base, json_t* candidate);

    // One operation for everything.
    bool replace_all(json_t* candidate) { return write("replace", candidate); }

    bool has_too_much_path_text() const { return path_text_ > kMostPathText; }
    Json operations() { return std::move(operations_); }

private:
    template <typename Name>
    bool compare_at(Name name, json_t* base, json_t* candidate);
    bool compare_objects(json_t* base, json_t* candidate);
    bool compare_arrays(json_t* base, json_t* candidate);
    bool write(const char* operation, json_t* value);

    Json operations_{json_array()};
    PointerWriter path_;
    size_t path_text_ = 0;
};

bool Walk::compare(json_t* base, json_t* candidate) {
    if (base == candidate) return true;
    if (base == nullptr) return write("add", candidate);
    if (candidate == nullptr) return write("remove", nullptr);
    if (is_object(base) && is_object(candidate)) return compare_objects(base, candidate);
    if (is_array(base) && is_array(candidate)) return compare_arrays(base, candidate);
    return equal_leaves(base, candidate, Numbers::kExact) || write("replace", candidate);
}

template <typename Name>
bool Walk::compare_at(Name name, json_t* base, json_t* candidate) {
    if (base == candidate) return true;
    const size_t here = path_.length();
    const bool done = path_.push(name) && compare(base, candidate);
    path_.cut(here);
    return done;
}

bool Walk::compare_objects(json_t* base, json_t* candidate) {
    size_t kept = 0;
    for (const auto& [name, value] : Members{base}) {
        json_t* other = member(candidate, name);
        if (other != nullptr) ++kept;
        if (!compare_at(name, value, other)) return false;
    }
    if (kept == json_object_size(candidate)) return true;
    for (const auto& [name, value] : Members{candidate}) {
        if (member(base, name) != nullptr) continue;
        if (!compare_at(name, nullptr, value)) return false;
    }
    return true;
}

// Three cases. In arrays of one length every element is compared in place. Of a longer candidate, and of a shorter
// one, the elements that are the same at the front and at the back stay; those between are compared in place, and what
// is then left of the candidate is added, or of the base removed.
// No value is compared more than twice to find that front and back: arrays of different lengths inside it are told
// apart by their lengths alone.
bool Walk::compare_arrays(json_t* base, json_t* candidate) {
    size_t base_end = json_array_size(base);
    size_t candidate_end = json_array_size(candidate);
    size_t at = 0;
    if (base_end != candidate_end) {
        const size_t shorter = std::min(base_end, candidate_end);
        while (at < shorter && same(json_array_get(base, at), json_array_get(candidate, at))) ++at;
        while (at < std::min(base_end, candidate_end) &&
               same(json_array_get(base, base_end - 1), json_array_get(candidate, candidate_end - 1))) {
            --base_end;
            --candidate_end;
        }
    }
    for (; at < std::min(base_end, candidate_end); ++at) {
        if (!compare_at(at, json_array_get(base, at), json_array_get(candidate, at))) return false;
    }
    // From the back, so that no index moves.
    for (; base_end > at; --base_end) {
        if (!compare_at(base_end - 1, json_array_get(base, base_end - 1), nullptr)) return false;
    }
    for (; at < candidate_end; ++at) {
        if (!compare_at(at, nullptr, json_array_get(candidate, at))) return false;
    }
    return true;
}

bool Walk::write(const char* operation, json_t* value) {
    const std::string_view path = path_.view();
    path_text_ += path.size();
    if (has_too_much_path_text()) return false;
    Json written{json_object()};
    return store(written.get(), "op", Json{json_string_nocheck(operation)}) &&
           store(written.get(), "path", Json{json_stringn_nocheck(path.data(), path.size())}) &&
           (value == nullptr || store(written.get(), "value", share(value))) &&
           json_array_append_new(operations_.get(), written.release()) == 0;
}

}  // namespace

Json patch_between(json_t* base, json_t* candidate) {
    Walk walk;
    if (walk.compare(base, candidate)) return walk.operations();
    Walk whole;
    return walk.has_too_much_path_text() && whole.replace_all(candidate) ? whole.operations() : Json{};
}

}  // namespace kcnvrt::conf
