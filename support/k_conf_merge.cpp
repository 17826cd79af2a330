// JSON Merge Patches: made, and applied.
#include "k_conf_merge.h"

namespace kcnvrt::conf {

namespace {

// What changes in a member that both have. A candidate that is null becomes a removal by being written down.
bool compare_member(json_t* patch, std::string_view name, json_t* base, json_t* candidate) {
    if (base == candidate) return true;
    if (!is_object(base) || !is_object(candidate)) {
        return equal_trees(base, candidate, Numbers::kExact) || store(patch, name, share(candidate));
    }
    Json changes = merge_between(base, candidate);
    if (changes == nullptr) return false;
    return json_object_size(changes.get()) == 0 || store(patch, name, std::move(changes));
}

}  // namespace

Json merge_between(json_t* base, json_t* candidate) {
    if (!is_object(base)) return shallow_copy(candidate);
    Json patch{json_object()};
    for (const auto& [name, value] : Members{base}) {
        json_t* other = member(candidate, name);
        const bool done = other == nullptr ? store(patch.get(), name, Json{json_null()})
                                           : compare_member(patch.get(), name, value, other);
        if (!done) return {};
    }
    for (const auto& [name, value] : Members{candidate}) {
        if (json_typeof(value) == JSON_NULL || member(base, name) != nullptr) continue;
        if (!store(patch.get(), name, share(value))) return {};
    }
    return patch;
}

Json apply_merge(json_t* base, json_t* patch) {
    if (!is_object(patch)) return share(patch);
    Json merged = is_object(base) ? shallow_copy(base) : Json{json_object()};
    if (merged == nullptr) return {};
    for (const auto& [name, value] : Members{patch}) {
        if (json_typeof(value) == JSON_NULL) {
            json_object_deln(merged.get(), name.data(), name.size());
        } else if (!store(merged.get(), name, apply_merge(member(merged.get(), name), value))) {
            return {};
        }
    }
    return merged;
}

}  // namespace kcnvrt::conf
