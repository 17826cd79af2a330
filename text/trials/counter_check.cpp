#include "trials/counter_check.h"

#include <k_cnvrt.h>

#include <cstring>
#include <utility>

namespace kcnvrt::text {

namespace {

bool is_same_message(const k_err_t* one, const k_err_t* other, size_t index) {
    return k_err_is_counted(one, index) == k_err_is_counted(other, index) &&
           std::strcmp(k_err_function(one, index), k_err_function(other, index)) == 0 &&
           std::strcmp(k_err_message(one, index), k_err_message(other, index)) == 0;
}

bool has_same_messages(const k_err_t* one, const k_err_t* other) {
    if (k_err_count(one) != k_err_count(other) || k_err_printed_count(one) != k_err_printed_count(other)) return false;
    for (size_t i = 0; i < k_err_count(one); ++i)
        if (!is_same_message(one, other, i)) return false;
    for (size_t i = 0; i < k_err_printed_count(one); ++i)
        if (std::strcmp(k_err_printed(one, i), k_err_printed(other, i)) != 0) return false;
    return true;
}

}  // namespace

bool is_same(const Outcome& one, const Outcome& other) {
    const bool has_same_tree = one.tree && other.tree ? json_equal(one.tree.get(), other.tree.get()) == 1
                                                      : one.tree == nullptr && other.tree == nullptr;
    return has_same_tree && has_same_messages(one.record.get(), other.record.get());
}

json_t* CounterCheck::convert(const Way& way, json_t* source, k_err_t* record) {
    ++conversions_;
    if (way.section == nullptr) {
        return way.is_to_new ? k_cnvrt_to_new(source, nullptr, way.flags, record)
                             : k_cnvrt_to_old(source, way.flags, record);
    }
    return way.is_to_new ? k_cnvrt_get_section_to_new(way.section, source, nullptr, 0, record)
                         : k_cnvrt_get_section_to_old(way.section, source, record);
}

bool CounterCheck::convert(const Way& way, json_t* source, Outcome& outcome) {
    outcome.tree.reset();
    outcome.record.reset(k_err_new());
    if (!outcome.record) return false;
    k_err_keep_printed(outcome.record.get());
    outcome.tree.reset(convert(way, source, outcome.record.get()));
    return k_err_is_complete(outcome.record.get()) != 0;
}

bool CounterCheck::convert(json_t* source, Outcome& outcome) {
    if (!returns_) return convert(way_, source, outcome);
    Outcome there;
    if (!convert(way_, source, there)) return false;
    if (there.tree) return convert(way_.back(), there.tree.get(), outcome);
    outcome = std::move(there);
    return true;
}

bool CounterCheck::convert_changed(json_t* source, GrowingArray<Change>& changes, const Outcome& before,
                                   bool& is_changed) {
    const ForAWhile for_a_while(memory_);
    const Json copy = changed_copy(source, changes);
    Outcome after;
    if (!copy || !convert(copy.get(), after)) return false;
    is_changed = !is_same(before, after);
    return true;
}

}  // namespace kcnvrt::text
