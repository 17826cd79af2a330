// The difference of two JSON values, and the application of a difference that somebody made up. The bytes: a JSON text,
// NUL, another one, NUL, edits of the second.
#include "bytes.h"
#include "edits.h"
#include "k_conf.h"
#include "properties.h"
#include "runner/allocations.h"

namespace {

using Difference = Tree (*)(json_t* base, json_t* candidate);

Tree json_patch(json_t* base, json_t* candidate) {
    return Tree{k_conf_diff_set2(base, candidate, 0, K_CONF_JSON_PATCH, nullptr)};
}
Tree merge_patch(json_t* base, json_t* candidate) {
    return Tree{k_conf_diff_set2(base, candidate, 0, K_CONF_MERGE_PATCH, nullptr)};
}

// What a merge patch can make of the base: a null member stays where the base has one, and is left out elsewhere.
Tree reachable_by_merging(json_t* base, json_t* candidate) {
    if (!json_is_object(candidate)) return Tree{json_incref(candidate)};
    Tree reachable{json_object()};
    for (void* at = json_object_iter(candidate); at != nullptr; at = json_object_iter_next(candidate, at)) {
        const char* name = json_object_iter_key(at);
        const size_t length = json_object_iter_key_len(at);
        json_t* const value = json_object_iter_value(at);
        json_t* const old = json_object_getn(base, name, length);
        if (json_is_null(value) && !json_is_null(old)) continue;
        json_object_setn_new_nocheck(reachable.get(), name, length, reachable_by_merging(old, value).release());
    }
    return reachable;
}

void check_one_way(json_t* base, json_t* candidate) {
    const Tree patch = json_patch(base, candidate);
    const Tree patched{k_conf_apply(base, patch.get(), nullptr)};
    require(json_equal(patched.get(), candidate) != 0, "the base with its difference is the candidate", candidate);
    require(json_array_size(patch.get()) != 0 || json_equal(base, candidate) != 0, "no difference only where none is",
            candidate);

    const Tree merge = merge_patch(base, candidate);
    require((merge != nullptr) == json_is_object(candidate), "a merge patch for every object", candidate);
    if (merge == nullptr) return;
    const Tree merged{k_conf_apply(base, merge.get(), nullptr)};
    const Tree reachable = reachable_by_merging(base, candidate);
    require(json_equal(merged.get(), reachable.get()) != 0, "a merge patch reaches the candidate but for its nulls",
            candidate);
}

void check_no_way(json_t* tree) {
    require(json_array_size(json_patch(tree, tree).get()) == 0, "a value does not differ from itself", tree);
    require(json_object_size(merge_patch(tree, tree).get()) == 0, "nor in a merge patch", tree);
}

// The second text as a difference to the first: it fits or it is refused with a message.
void check_made_up(json_t* base, json_t* difference) {
    k_err_t* const err = k_err_new();
    const Tree applied{k_conf_apply(base, difference, err)};
    require((applied == nullptr) == (k_err_count(err) != 0), "a difference that is refused has a message", difference);
    k_err_free(err);
}

void check_all(std::string_view base_text, std::string_view candidate_text, Bytes edits) {
    const Tree base = read_tree(base_text);
    Tree candidate = candidate_text.empty() ? Tree{json_deep_copy(base.get())} : read_tree(candidate_text);
    edit(candidate, edits);
    if (levels_of(candidate.get()) > K_CONF_MAX_LEVELS) return;
    const std::string before = picture_of(base.get()) + picture_of(candidate.get());
    check_no_way(base.get());
    check_one_way(base.get(), candidate.get());
    check_one_way(candidate.get(), base.get());
    check_made_up(base.get(), candidate.get());
    require(picture_of(base.get()) + picture_of(candidate.get()) == before, "both stay as they are", candidate.get());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const std::string_view base = bytes.take_until('\0');
    const std::string_view candidate = bytes.take_until('\0');
    const long before = live_allocations();
    check_all(base, candidate, bytes);
    require(live_allocations() == before, "nothing leaks", nullptr);
    return 0;
}
