// DSCP marks: names in the old layout, code points in the new.
#include "frame/named_number.h"
#include "qos/qos.h"

namespace kcnvrt::ways {

namespace {

// clang-format off
constexpr NamedNumber<5> kMarks[] = {
    // The class selectors.
    {"CS0",   0},
    {"CS1",   8},
    {"CS2",  16},
    {"CS3",  24},
    {"CS4",  32},
    {"CS5",  40},
    {"CS6",  48},
    {"CS7",  56},
    // Assured forwarding: four classes of three drop precedences each.
    {"AF11", 10},
    {"AF12", 12},
    {"AF13", 14},
    {"AF21", 18},
    {"AF22", 20},
    {"AF23", 22},
    {"AF31", 26},
    {"AF32", 28},
    {"AF33", 30},
    {"AF41", 34},
    {"AF42", 36},
    {"AF43", 38},
    // Expedited forwarding.
    {"EF",   46},
};
// clang-format on
static_assert(is_one_to_one(kMarks));

// Another name of 0, which is only read: 0 comes back under its name in the table.
constexpr std::string_view kDefaultMark = "default";

const NamedNumber<5>* mark_named(std::string_view name) {
    return name == kDefaultMark ? by_number(kMarks, 0) : by_name(kMarks, name);
}

// What the new layout says for no mark.
constexpr json_int_t kNoMark = -1;

}  // namespace

int mark_to_new(json_t* new_class, Key key, json_t* value, const Report& report) {
    const std::string_view name = view_of(value);
    if (name.empty()) return 0;
    const auto* const mark = mark_named(name);
    if (mark == nullptr) return report.under("set_mark").fail("Error mark [%s]!", text_of(value));
    set(new_class, key, integer(mark->number));
    return 0;
}

int mark_to_old(json_t* filter, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    const Report author = report.under("set_mark");
    if (!json_is_integer(value)) return author.fail("Error field format! Is not integer!");
    const json_int_t number = json_integer_value(value);
    if (number == kNoMark) return 0;
    const auto* const mark = by_number(kMarks, number);
    if (mark == nullptr) return author.fail("Error mark! His number is %lld", static_cast<long long>(number));
    set(filter, key, string(mark->name));
    return 0;
}

}  // namespace kcnvrt::ways
