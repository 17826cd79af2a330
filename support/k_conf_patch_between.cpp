#include <algorithm>

#include "k_conf_patch.h"
#include "k_conf_pointer.h"

namespace kcnvrt::conf {

namespace {

// How often, on average, a value may be compared only to find out how two arrays line up. A first element that turns
// out to differ is walked again for its own differences, and so is every array inside it: without a bound, arrays of
// different lengths inside one another would cost the square of their depth. Beyond the bound, elements are taken as
// different when they are lined up, which makes the patch longer, not wrong.
constexpr uint64_t kComparisonsPerValue = 32;

// Walks both documents side by side and writes down the operations. Every function returns false when memory runs out.
class Walk {
public:
    explicit Walk(uint64_t comparisons) : operations_{json_array()}, comparisons_{comparisons} {}

    // An absent base is an addition, an absent candidate a removal.
    bool compare(json_t* base, json_t* candidate);

    Json operations() { return std::move(operations_); }

private:
    template <typename Name>
    bool compare_at(Name name, json_t* base, json_t* candidate);
    bool compare_objects(json_t* base, json_t* candidate);
    bool compare_arrays(json_t* base, json_t* candidate);
    bool same(json_t* a, json_t* b) { return equal_trees(a, b, Numbers::kExact, &comparisons_); }
    bool write(const char* operation, json_t* value);

    Json operations_;
    PointerWriter path_;
    uint64_t comparisons_;
};

bool Walk::compare(json_t* base, json_t* candidate) {
    if (base == candidate) return true;
    if (base == nullptr) return write("add", candidate);
    if (candidate == nullptr) return write("remove", nullptr);
    if (json_is_object(base) && json_is_object(candidate)) return compare_objects(base, candidate);
    if (json_is_array(base) && json_is_array(candidate)) return compare_arrays(base, candidate);
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
    const char* name;
    size_t length;
    json_t* value;
    size_t kept = 0;
    json_object_keylen_foreach(base, name, length, value) {
        json_t* other = json_object_getn(candidate, name, length);
        if (other != nullptr) ++kept;
        if (!compare_at(std::string_view{name, length}, value, other)) return false;
    }
    if (kept == json_object_size(candidate)) return true;
    json_object_keylen_foreach(candidate, name, length, value) {
        if (json_object_getn(base, name, length) != nullptr) continue;
        if (!compare_at(std::string_view{name, length}, nullptr, value)) return false;
    }
    return true;
}

// Between an unchanged front and an unchanged back, elements are compared in place, and what one array has more is
// removed or added after them. Arrays of one length are in place throughout: nothing has to be lined up.
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
    Json written{json_object()};
    return store(written.get(), "op", Json{json_string_nocheck(operation)}) &&
           store(written.get(), "path", Json{json_stringn_nocheck(path.data(), path.size())}) &&
           (value == nullptr || store(written.get(), "value", share(value))) &&
           json_array_append_new(operations_.get(), written.release()) == 0;
}

}  // namespace

Json patch_between(json_t* base, json_t* candidate, uint64_t cost) {
    Walk walk{cost * kComparisonsPerValue};
    return walk.compare(base, candidate) ? walk.operations() : Json{};
}

}  // namespace kcnvrt::conf
