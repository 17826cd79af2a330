// ways.h: the ways a value crosses from one layout to the other, which the words of field.h put together.
//
// Every way has one signature: it stores one value, which may be absent, under one name. It returns the count of failed
// fields, 0 or 1 for a single value, and has reported each. An absent value stores nothing, where no other rule is
// given.
#pragma once

#include <cstddef>
#include <string_view>

#include "json.h"
#include "report.h"

namespace kcnvrt {

using Way = int (*)(json_t* destination, Key key, json_t* value, const Report& report);

namespace ways {

// Either direction: the value as it stands, whatever its type.
int carry(json_t* destination, Key key, json_t* value, const Report& report);

// Towards the new layout.
int integer_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int boolean_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int string_to_new(json_t* destination, Key key, json_t* value, const Report& report);
int password_to_new(json_t* destination, Key key, json_t* value, const Report& report);
// "" becomes the default text.
int string_or_default(json_t* destination, Key key, json_t* value, const char* default_text, const Report& report);
// An absent value becomes false.
int carry_or_false(json_t* destination, Key key, json_t* value, const Report& report);
// A connection status: an absent one and "" become "Disconnected".
int status_to_new(json_t* destination, Key key, json_t* value, const Report& report);

// Towards the old layout.
int integer_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int boolean_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int string_to_old(json_t* destination, Key key, json_t* value, const Report& report);
int password_to_old(json_t* destination, Key key, json_t* value, const Report& report);

// A text as a template argument.
template <size_t N>
struct Text {
    char characters[N];
    constexpr Text(const char (&literal)[N]) {
        for (size_t i = 0; i < N; ++i) characters[i] = literal[i];
    }
    constexpr std::string_view view() const { return {characters, N - 1}; }
};

template <Text Default>
int string_or(json_t* destination, Key key, json_t* value, const Report& report) {
    return string_or_default(destination, key, value, Default.characters, report);
}

}  // namespace ways

}  // namespace kcnvrt
