// The public face of the differences: what is refused, and under which message.
#include "k_conf.h"

#include <cstring>

#include "k_conf_merge.h"
#include "k_conf_patch.h"
#include "k_conf_pointer.h"

using namespace kcnvrt;
using namespace kcnvrt::conf;

namespace {

// An array of operations around a document that has all the levels it may have.
constexpr size_t kPatchLevels = kMaxLevels + 2;

// A public function as the author of its messages. Each is about an argument, where it has a place, or about none.
class Author {
public:
    Author(const char* function, k_err_t* err, int line = __builtin_LINE())
        : function_{function}, err_{err}, line_{line} {}

    [[gnu::format(printf, 3, 4)]] void say(json_t* about, const char* format, ...) const {
        const size_t first = k_err_count(err_);
        va_list arguments;
        va_start(arguments, format);
        k_err_vset(err_, function_, line_, format, arguments);
        va_end(arguments);
        k_err_locate(err_, first, about);
    }

    // The operation is an element of the difference.
    void say_misfit(json_t* difference, const Misfit& misfit) const {
        const size_t first = k_err_count(err_);
        k_err_set(err_, function_, line_, "Operation %zu at \"%s\": %s", misfit.number, misfit.path, misfit.problem);
        PointerWriter index;
        if (index.push(misfit.number - 1)) k_err_place(err_, difference, index.view().data() + 1, index.length() - 1);
        k_err_locate(err_, first, difference);
        if (std::strcmp(misfit.problem, problem::kNoMemory) == 0) k_err_no_memory();
    }

private:
    const char* function_;
    k_err_t* err_;
    int line_;
};

// Takes part in a difference: is there, and is not nested too deep. What it costs to walk is taken from `left`.
bool accepts(json_t* document, size_t levels, uint64_t* left, const char* what, json_t* about, const Author& author) {
    if (document == nullptr) {
        author.say(nullptr, "There is no %s", what);
        return false;
    }
    if (measure(document, levels, left) != Extent::kFits) {
        author.say(about, "The %s is nested more than %zu levels deep", what, levels);
        return false;
    }
    return true;
}

json_t* or_out_of_memory(Json result, const Author& author) {
    if (result == nullptr) {
        k_err_no_memory();
        author.say(nullptr, "Out of memory");
    }
    return result.release();
}

}  // namespace

json_t* k_conf_diff_set2(json_t* base, json_t* candidate, int, unsigned flag, k_err_t* err) {
    const Author author{"k_conf_diff_set2", err};
    uint64_t unlimited = kUnlimited;
    if (!accepts(base, kMaxLevels, &unlimited, "base", nullptr, author)) return nullptr;
    if (!accepts(candidate, kMaxLevels, &unlimited, "candidate", candidate, author)) return nullptr;
    if ((flag & K_CONF_MERGE_PATCH) == 0) return or_out_of_memory(patch_between(base, candidate), author);
    if (!is_object(candidate)) {
        author.say(candidate, "The candidate is not an object, which a merge patch cannot express");
        return nullptr;
    }
    return or_out_of_memory(merge_between(base, candidate), author);
}

json_t* k_conf_apply(json_t* base, json_t* difference, k_err_t* err) {
    const Author author{"k_conf_apply", err};
    const bool is_patch = is_array(difference);
    uint64_t left = kUnlimited;
    if (!accepts(base, kMaxLevels, &left, "base", nullptr, author)) return nullptr;
    left = kUnlimited;
    if (!accepts(difference, is_patch ? kPatchLevels : kMaxLevels, &left, "difference", difference, author))
        return nullptr;
    if (is_object(difference)) return or_out_of_memory(apply_merge(base, difference), author);
    if (!is_patch) {
        author.say(difference, "The difference is neither an array nor an object");
        return nullptr;
    }
    Misfit misfit{};
    Json result = apply_patch(base, difference, kUnlimited - left, &misfit);
    if (misfit.problem == nullptr) return or_out_of_memory(std::move(result), author);
    author.say_misfit(difference, misfit);
    return nullptr;
}
