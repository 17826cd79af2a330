#include "basis/sort.h"

#include <algorithm>

namespace kcnvrt::text {

namespace {

class Heap {
public:
    Heap(void* items, size_t size, Order order) : items_{static_cast<char*>(items)}, size_{size}, order_{order} {}

    bool is_before(size_t left, size_t right) const { return order_.is_before(order_.context, at(left), at(right)); }

    void swap(size_t left, size_t right) { std::swap_ranges(at(left), at(left) + size_, at(right)); }

    // Lets the item at `top` sink to where none of those below it, of the first `count`, belongs behind it.
    void sink(size_t top, size_t count) {
        for (size_t below = 2 * top + 1; below < count; below = 2 * top + 1) {
            if (below + 1 < count && is_before(below, below + 1)) ++below;
            if (!is_before(top, below)) return;
            swap(top, below);
            top = below;
        }
    }

private:
    char* at(size_t index) const { return items_ + index * size_; }

    char* items_;
    size_t size_;
    Order order_;
};

bool is_sorted(const Heap& items, size_t count) {
    for (size_t i = 1; i < count; ++i)
        if (items.is_before(i, i - 1)) return false;
    return true;
}

}  // namespace

void sort_items(void* items, size_t count, size_t size, Order order) {
    Heap heap{items, size, order};
    if (is_sorted(heap, count)) return;
    for (size_t top = count / 2; top-- > 0;) heap.sink(top, count);
    for (size_t last = count - 1; last > 0; --last) {
        heap.swap(0, last);
        heap.sink(0, last);
    }
}

}  // namespace kcnvrt::text
