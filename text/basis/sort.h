// sort.h: sorts arrays of what can be moved by copying its bytes. All types share one piece of code, where std::sort is
// two to four kilobytes for each, and equal items come out in the same order on every machine.
#pragma once

#include <cstddef>
#include <type_traits>

namespace kcnvrt::text {

// Whether an item stands before another one; the context is the caller's.
struct Order {
    bool (*is_before)(const void* context, const void* left, const void* right);
    const void* context;
};

// By a heap: no memory is needed, and no order of the items makes it slow.
void sort_items(void* items, size_t count, size_t size, Order order);

template <class Item, class IsBefore>
void sort(Item* begin, Item* end, const IsBefore& is_before) {
    static_assert(std::is_trivially_copyable_v<Item>);
    const auto compare = [](const void* context, const void* left, const void* right) -> bool {
        const auto& precedes = **static_cast<const IsBefore* const*>(context);
        return precedes(*static_cast<const Item*>(left), *static_cast<const Item*>(right));
    };
    const IsBefore* const context = &is_before;
    sort_items(begin, static_cast<size_t>(end - begin), sizeof(Item), {compare, &context});
}

}  // namespace kcnvrt::text
