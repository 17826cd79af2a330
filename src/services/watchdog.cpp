// The watchdog: its settings and the entries that it watches.
#include <algorithm>

#include "frame/list.h"
#include "frame/number.h"
#include "k_cnvrt.h"
#include "k_cnvrt/services.h"

using namespace kcnvrt;

namespace {

// clang-format off
constexpr auto kWatchdog = fields(
    boolean_in_both("enable"),
    carried        ("primary_timeo"));
// clang-format on

// The old layout counts the watched entries from 0, among its settings; the new one from 1, in a list. Numbers are
// unsigned 32-bit and wrap: 0 in a new list becomes 4294967295.
constexpr uint32_t kToNew = 1;
constexpr uint32_t kToOld = UINT32_MAX;

// Carries the entries under their numbers plus `shift`, gaps and all. Returns the largest number written, 0 for none.
uint32_t renumber(json_t* entries, json_t* destination, uint32_t shift) {
    uint32_t largest = 0;
    for (const auto [name, entry] : members(entries)) {
        uint32_t number = 0;
        if (!json_is_object(entry) || !read_strictly(name.view(), number)) continue;
        number += shift;
        carry(destination, Decimal{number}, entry);
        largest = std::max(largest, number);
    }
    return largest;
}

}  // namespace

int parse_old_watchdog(json_t* source, json_t* destination, k_err_t* err) {
    const int failures = to_new(kWatchdog, source, destination, Report{__func__, err});
    Json list = object();
    set_max_instance(list.get(), renumber(source, list.get(), kToNew));
    set(destination, "list", std::move(list));
    return failures;
}

int parse_new_watchdog(json_t* source, json_t* destination, k_err_t* err) {
    const int failures = to_old(kWatchdog, source, destination, Report{__func__, err});
    renumber(get(source, "list"), destination, kToOld);
    return failures;
}
