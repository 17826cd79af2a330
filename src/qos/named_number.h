// named_number.h: small tables of names and numbers that are read both ways.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kcnvrt {

// The name lies in the row, so that a table has no pointers.
struct NamedNumber {
    char name[5];
    uint8_t number;
};

// The row of a name or of a number, or null.
template <size_t N>
constexpr const NamedNumber* by_name(const NamedNumber (&rows)[N], std::string_view name) {
    for (const NamedNumber& row : rows)
        if (row.name == name) return &row;
    return nullptr;
}

template <size_t N>
constexpr const NamedNumber* by_number(const NamedNumber (&rows)[N], int64_t number) {
    for (const NamedNumber& row : rows)
        if (row.number == number) return &row;
    return nullptr;
}

// Whether every name and every number leads back to its own row.
template <size_t N>
constexpr bool is_one_to_one(const NamedNumber (&rows)[N]) {
    for (const NamedNumber& row : rows)
        if (by_name(rows, row.name) != &row || by_number(rows, row.number) != &row) return false;
    return true;
}

}  // namespace kcnvrt
