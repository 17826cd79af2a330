// The engine that runs a table, and the ways of ways.h.
#include "frame/field.h"

#include <algorithm>
#include <cstdlib>

#include "frame/number.h"
#include "k_str.h"

namespace kcnvrt {

namespace {

// Out of line, so that no row pays for the names of the few that fail.
[[gnu::cold, gnu::noinline]] int placed_row(int failures, json_t* object, Fields::Iterator row, Key Field::*name,
                                            const Report& report) {
    return report.placed(failures, object, (*row).*name);
}

}  // namespace

int to_new(Fields fields, json_t* old_object, json_t* new_object, const Report& report) {
    int failures = 0;
    for (auto row = fields.begin(), end = fields.end(); row != end; ++row) {
        const Field field = *row;
        if (field.to_new == nullptr) continue;
        const int failed = field.to_new(new_object, field.new_name, get(old_object, field.old_name), report);
        if (failed != 0) failures += placed_row(failed, old_object, row, &Field::old_name, report);
    }
    return failures;
}

int to_old(Fields fields, json_t* new_object, json_t* old_object, const Report& report) {
    int failures = 0;
    for (auto row = fields.begin(), end = fields.end(); row != end; ++row) {
        const Field field = *row;
        if (field.to_old == nullptr) continue;
        const int failed = field.to_old(old_object, field.old_name, get(new_object, field.new_name), report);
        if (failed != 0) failures += placed_row(failed, new_object, row, &Field::new_name, report);
    }
    return failures;
}

namespace ways {

namespace {

int is_not_string(Key key, const Report& report) {
    return report.fail("Invalid field \"%s\", is not string", key.text());
}

int text_to_boolean(json_t* destination, Key key, json_t* value, const Report& report) {
    const std::string_view text = view_of(value);
    const bool is_true = text == "1" || text == "true";
    if (!is_true && text != "0" && text != "false")
        return report.fail("Invalid field \"%s\", \"%s\"!=[\"0\",\"1\",\"true\",\"false\"]", key.text(),
                           text_of(value));
    set(destination, key, boolean(is_true));
    return 0;
}

int number_to_boolean(json_t* destination, Key key, json_t* value, const Report& report) {
    const json_int_t number = json_integer_value(value);
    if (number != 0 && number != 1) return report.fail("Invalid field \"%s\", number != 0 or 1", key.text());
    set(destination, key, boolean(number == 1));
    return 0;
}

// A password in its other form: null becomes "", a string what `convert` makes of it.
int convert_password(json_t* destination, Key key, json_t* value, const Report& report,
                     int (*convert)(const char*, char**), const char* other_form) {
    if (value == nullptr) return 0;
    if (json_is_null(value)) {
        set(destination, key, string(""));
        return 0;
    }
    if (!json_is_string(value)) return is_not_string(key, report);
    char* converted = nullptr;
    if (convert(text_of(value), &converted) < 0)
        return report.fail("Invalid field \"%s\", error convert password to %s", key.text(), other_form);
    const Allocated<char> text{converted};
    set(destination, key, checked_string(text.get()));
    return 0;
}

}  // namespace

int carry(json_t* destination, Key key, json_t* value, const Report&) {
    return kcnvrt::carry(destination, key, value);
}

int carry_or_false(json_t* destination, Key key, json_t* value, const Report&) {
    set(destination, key, value == nullptr ? boolean(false) : share(value));
    return 0;
}

int integer_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_integer(value)) return kcnvrt::carry(destination, key, value);
    if (!json_is_string(value)) return is_not_string(key, report);
    const std::string_view text = view_of(value);
    if (text.empty()) return 0;
    uint32_t number = 0;
    if (!read_strictly(text, number)) return report.fail("Invalid field \"%s\", is not digit", key.text());
    // Kept as a signed 32-bit quantity: 4294967295 is stored as -1.
    set(destination, key, integer(static_cast<int32_t>(number)));
    return 0;
}

int boolean_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_string(value)) return text_to_boolean(destination, key, value, report);
    if (json_is_integer(value)) return number_to_boolean(destination, key, value, report);
    if (!json_is_boolean(value)) return report.fail("Invalid field \"%s\", is not string or int or bool!", key.text());
    return kcnvrt::carry(destination, key, value);
}

int string_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (json_is_null(value)) {
        set(destination, key, string(""));
        return 0;
    }
    if (!json_is_string(value)) return report.fail("Invalid field \"%s\", is not null or string", key.text());
    return kcnvrt::carry(destination, key, value);
}

int password_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    return convert_password(destination, key, value, report, k_str_base64_encode, "base64");
}

int string_or_default(json_t* destination, Key key, json_t* value, const char* default_text, const Report& report) {
    if (value == nullptr) return 0;
    // This message has always come without its key.
    if (!json_is_string(value)) return is_not_string("", report);
    set(destination, key, json_string_length(value) == 0 ? checked_string(default_text) : share(value));
    return 0;
}

int status_to_new(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value != nullptr) return string_or<"Disconnected">(destination, key, value, report);
    set(destination, key, string("Disconnected"));
    return 0;
}

int integer_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_integer(value)) return report.fail("Invalid field \"%s\", is not integer", key.text());
    // The old layout's numbers are at most seven characters long; the rest is cut without a report.
    constexpr size_t kLongest = 7;
    const Decimal decimal{json_integer_value(value)};
    const std::string_view text = decimal.view();
    set(destination, key, string(std::string_view{text.data(), std::min(text.size(), kLongest)}));
    return 0;
}

int boolean_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_boolean(value))
        return report.fail("Invalid field \"%s\", json_type is %d", key.text(), static_cast<int>(json_typeof(value)));
    set(destination, key, json_is_true(value) ? string("1") : string("0"));
    return 0;
}

int string_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    if (value == nullptr) return 0;
    if (!json_is_string(value)) return is_not_string(key, report);
    set(destination, key, json_string_length(value) == 0 ? null() : share(value));
    return 0;
}

int password_to_old(json_t* destination, Key key, json_t* value, const Report& report) {
    return convert_password(destination, key, value, report, k_str_base64_decode, "plain text");
}

}  // namespace ways

}  // namespace kcnvrt
