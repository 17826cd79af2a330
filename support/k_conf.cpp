// k_conf.cpp: the public face of the differences: what is refused, and under which message.
#include "k_conf.h"

#include "k_conf_merge.h"
#include "k_conf_patch.h"

using namespace kcnvrt::conf;

namespace {

// An array of operations around a document that has all the levels it may have.
constexpr size_t kPatchLevels = kMaxLevels + 2;

// Takes part in a difference: is there, and is not nested too deep. What it costs to walk is taken from `left`.
bool accepts(json_t* document, size_t levels, uint64_t* left, const char* what, const char* function, k_err_t* err) {
    if (document == nullptr) {
        k_err_set(err, function, __LINE__, "There is no %s", what);
        return false;
    }
    if (measure(document, levels, left) != Extent::kFits) {
        k_err_set(err, function, __LINE__, "The %s is nested more than %zu levels deep", what, levels);
        return false;
    }
    return true;
}

json_t* or_out_of_memory(Json result, const char* function, k_err_t* err) {
    if (result == nullptr) k_err_set(err, function, __LINE__, "Out of memory");
    return result.release();
}

}  // namespace

json_t* k_conf_diff_set2(json_t* base, json_t* candidate, int, unsigned flag, k_err_t* err) {
    constexpr char kFunction[] = "k_conf_diff_set2";
    uint64_t unlimited = kUnlimited;
    if (!accepts(base, kMaxLevels, &unlimited, "base", kFunction, err)) return nullptr;
    if (!accepts(candidate, kMaxLevels, &unlimited, "candidate", kFunction, err)) return nullptr;
    if ((flag & K_CONF_MERGE_PATCH) == 0) return or_out_of_memory(patch_between(base, candidate), kFunction, err);
    if (!is_object(candidate)) {
        k_err_set(err, kFunction, __LINE__, "The candidate is not an object, which a merge patch cannot express");
        return nullptr;
    }
    return or_out_of_memory(merge_between(base, candidate), kFunction, err);
}

json_t* k_conf_apply(json_t* base, json_t* difference, k_err_t* err) {
    constexpr char kFunction[] = "k_conf_apply";
    const bool is_patch = is_array(difference);
    uint64_t left = kUnlimited;
    if (!accepts(base, kMaxLevels, &left, "base", kFunction, err)) return nullptr;
    left = kUnlimited;
    if (!accepts(difference, is_patch ? kPatchLevels : kMaxLevels, &left, "difference", kFunction, err)) return nullptr;
    if (is_object(difference)) return or_out_of_memory(apply_merge(base, difference), kFunction, err);
    if (!is_patch) {
        k_err_set(err, kFunction, __LINE__, "The difference is neither an array nor an object");
        return nullptr;
    }
    Misfit misfit{};
    Json result = apply_patch(base, difference, kUnlimited - left, &misfit);
    if (misfit.problem == nullptr) return or_out_of_memory(std::move(result), kFunction, err);
    k_err_set(err, kFunction, __LINE__, "Operation %zu at \"%s\": %s", misfit.number, misfit.path, misfit.problem);
    return nullptr;
}
