// The IPv4 masks of a class: a text in the old layout, empty, a prefix length or a dotted mask; in the new layout a
// prefix length, or -1 for none.
#include "frame/number.h"
#include "k_addr.h"
#include "qos/qos.h"

namespace kcnvrt::ways {

namespace {

constexpr int kLongestPrefix = 32;
constexpr int kNoMask = -1;

int text_to_mask(json_t* new_class, Key key, json_t* value, const Report& report) {
    const std::string_view text = view_of(value);
    uint32_t length = 0;
    int prefix = kNoMask;
    if (read_strictly(text, length)) {
        if (length > kLongestPrefix)
            return report.fail("Error mask! Is not in range 0-%d! It value %lu", kLongestPrefix,
                               static_cast<unsigned long>(length));
        prefix = static_cast<int>(length);
    } else if (!text.empty()) {
        prefix = k_addr_v4_mask_to_prefix(text_of(value));
        if (prefix < 0)
            return report.fail("Error mask. It is not the number in the line and IP address. Is value is %s",
                               text_of(value));
    }
    set(new_class, key, integer(prefix));
    return 0;
}

}  // namespace

int mask_to_new(json_t* new_class, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_string(value)) return text_to_mask(new_class, key, value, report);
    if (json_is_integer(value)) {
        const json_int_t prefix = json_integer_value(value);
        if (prefix >= 0 && prefix <= kLongestPrefix) return 0;
        return report.fail("Error mask! Is not in range 0-%d! It value %lld", kLongestPrefix,
                           static_cast<long long>(prefix));
    }
    // A mask of another type has always been reported without counting as a failure, here and on the way back.
    report.note("Error mask. It isn't JSON_STRING or JSON_INTEGER. It - %d", static_cast<int>(json_typeof(value)));
    return 0;
}

int mask_to_old(json_t* old_class, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_integer(value)) {
        report.note("Wrong format mask [%s]. His type is %d", key.text(), static_cast<int>(json_typeof(value)));
        return 0;
    }
    const json_int_t prefix = json_integer_value(value);
    set(old_class, key, prefix < 0 ? string("") : string(Decimal{prefix}));
    return 0;
}

}  // namespace kcnvrt::ways
