#include "trials/other_value.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "basis/buffer.h"

namespace kcnvrt::text {

namespace {

std::string_view text_of(const json_t* value) {
    return {json_string_value(value), json_string_length(value)};
}

bool is_digits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char byte) { return byte >= '0' && byte <= '9'; });
}

// "0" and "1" are mostly a switch.
json_t* other_digits(std::string_view text) {
    Buffer digits;
    if (!digits.append({text.data(), text.size() - 1})) return nullptr;
    const char last = text.back();
    if (!digits.append(last == '0' || last == '2' ? "1" : last == '1' ? "0" : "2")) return nullptr;
    return json_stringn_nocheck(digits.data(), digits.size());
}

json_int_t other_number(json_int_t number) {
    if (number == 0 || number == 1) return 1 - number;
    return number == INT64_MAX ? 1 : number + 1;
}

}  // namespace

bool has_other_value(const json_t* value) {
    if (!json_is_string(value)) return json_is_boolean(value) || json_is_number(value);
    const std::string_view text = text_of(value);
    return text == "true" || text == "false" || is_digits(text);
}

Json other_value(const json_t* value) {
    if (json_is_boolean(value)) return Json(json_boolean(!json_is_true(value)));
    if (json_is_integer(value)) return Json(json_integer(other_number(json_integer_value(value))));
    if (json_is_real(value)) return Json(json_real(json_real_value(value) == 0 ? 1 : 0));
    const std::string_view text = text_of(value);
    if (text == "true") return Json(json_string("false"));
    if (text == "false") return Json(json_string("true"));
    return Json(other_digits(text));
}

}  // namespace kcnvrt::text
