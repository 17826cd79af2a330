// named_number.h: small tables of names and numbers. One table serves both directions and the lists in their messages,
// so a row that is added to it is known everywhere.
//
//     constexpr NamedNumber<8> kPolicies[] = {
//         {"disable", 0},
//         {"allow",   1},
//         {"deny",    2},
//     };
//     static_assert(is_one_to_one(kPolicies));
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/json.h"
#include "frame/listing.h"

namespace kcnvrt {

// The name lies in the row, so that a table has no pointers. `Size` is that of the longest name with its NUL.
template <size_t Size>
struct NamedNumber {
    char name[Size];
    uint8_t number;
};

// The row of a name or of a number, or null.

template <size_t Size, size_t N>
constexpr const NamedNumber<Size>* by_name(const NamedNumber<Size> (&rows)[N], std::string_view name) {
    for (const auto& row : rows)
        if (row.name == name) return &row;
    return nullptr;
}

template <size_t Size, size_t N>
constexpr const NamedNumber<Size>* by_number(const NamedNumber<Size> (&rows)[N], int64_t number) {
    for (const auto& row : rows)
        if (row.number == number) return &row;
    return nullptr;
}

// The row of a number in decimal, which has no sign, blanks or leading zeros.
template <size_t Size, size_t N>
const NamedNumber<Size>* by_decimal(const NamedNumber<Size> (&rows)[N], std::string_view decimal) {
    for (const auto& row : rows)
        if (Decimal{row.number}.view() == decimal) return &row;
    return nullptr;
}

// Whether every name and every number leads back to its own row.
template <size_t Size, size_t N>
constexpr bool is_one_to_one(const NamedNumber<Size> (&rows)[N]) {
    for (const auto& row : rows)
        if (by_name(rows, row.name) != &row || by_number(rows, row.number) != &row) return false;
    return true;
}

// The same for a table whose numbers are a boolean's.
template <size_t Size>
constexpr bool is_one_to_one_with_booleans(const NamedNumber<Size> (&rows)[2]) {
    return is_one_to_one(rows) && by_number(rows, false) != nullptr && by_number(rows, true) != nullptr;
}

// What a message lists of a table: kNamesOf<kPolicies, "\"", ", "> is "disable", "allow", "deny", each in its quotes,
// and kNumbersOf<kPolicies, "", ","> is 0,1,2.

template <const auto& rows, ways::Text quote, ways::Text separator>
inline constexpr auto kNamesOf = listing<quote, separator>([](auto add) {
    for (const auto& row : rows) add(row.name);
});

template <const auto& rows, ways::Text quote, ways::Text separator>
inline constexpr auto kNumbersOf = listing<quote, separator>([](auto add) {
    for (const auto& row : rows) add(ByteDigits{row.number}.view());
});

}  // namespace kcnvrt
