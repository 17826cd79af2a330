// type_table.h: what the compiler checks of a table with a row for each type, and of the orders in which its rows are
// taken.
#pragma once

#include <cstddef>
#include <iterator>

namespace kcnvrt {

// Whether each row stands where its enumerator says, and no two have the same "type".
template <class Row, size_t Rows>
constexpr bool has_each_type_once(const Row (&rows)[Rows]) {
    for (size_t at = 0; at < Rows; ++at) {
        if (static_cast<size_t>(rows[at].row) != at) return false;
        for (size_t before = 0; before < at; ++before)
            if (rows[before].type == rows[at].type) return false;
    }
    return true;
}

// Whether an order has every row, and none twice.
template <class Order>
constexpr bool takes_each_row_once(const Order& order) {
    for (size_t row = 0; row < std::size(order); ++row) {
        size_t count = 0;
        for (const auto taken : order) count += static_cast<size_t>(taken) == row;
        if (count != 1) return false;
    }
    return true;
}

}  // namespace kcnvrt
