#include "k_conf_merge.h"

namespace kcnvrt::conf {

namespace {

bool equal(json_t* a, json_t* b) {
    uint64_t unlimited = kUnlimited;
    return equal_trees(a, b, Numbers::kExact, &unlimited);
}

// What changes in a member that both have. A candidate that is null becomes a removal by being written down.
bool compare_member(json_t* patch, std::string_view name, json_t* base, json_t* candidate) {
    if (base == candidate) return true;
    if (!json_is_object(base) || !json_is_object(candidate)) {
        return equal(base, candidate) || store(patch, name, share(candidate));
    }
    Json changes = merge_between(base, candidate);
    if (changes == nullptr) return false;
    return json_object_size(changes.get()) == 0 || store(patch, name, std::move(changes));
}

}  // namespace

Json merge_between(json_t* base, json_t* candidate) {
    if (!json_is_object(base)) return shallow_copy(candidate);
    Json patch{json_object()};
    const char* text;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(base, text, length, value) {
        const std::string_view name{text, length};
        json_t* other = json_object_getn(candidate, text, length);
        const bool done = other == nullptr ? store(patch.get(), name, Json{json_null()})
                                           : compare_member(patch.get(), name, value, other);
        if (!done) return {};
    }
    json_object_keylen_foreach(candidate, text, length, value) {
        if (json_is_null(value) || json_object_getn(base, text, length) != nullptr) continue;
        if (!store(patch.get(), {text, length}, share(value))) return {};
    }
    return patch;
}

Json apply_merge(json_t* base, json_t* patch) {
    if (!json_is_object(patch)) return share(patch);
    Json merged = json_is_object(base) ? shallow_copy(base) : Json{json_object()};
    if (merged == nullptr) return {};
    const char* name;
    size_t length;
    json_t* value;
    json_object_keylen_foreach(patch, name, length, value) {
        if (json_is_null(value)) {
            json_object_deln(merged.get(), name, length);
        } else if (!store(merged.get(), {name, length},
                          apply_merge(json_object_getn(merged.get(), name, length), value))) {
            return {};
        }
    }
    return merged;
}

}  // namespace kcnvrt::conf
