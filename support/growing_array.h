// growing_array.h: an array that grows, of what can be moved by copying its bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "shortage.h"

namespace kcnvrt {

template <class Item>
class GrowingArray {
    static_assert(std::is_trivially_copyable_v<Item>);

public:
    ~GrowingArray() { std::free(items_); }
    GrowingArray() = default;
    GrowingArray(const GrowingArray&) = delete;
    GrowingArray& operator=(const GrowingArray&) = delete;

    size_t size() const { return size_; }
    bool is_empty() const { return size_ == 0; }
    Item& operator[](size_t at) { return items_[at]; }
    const Item& operator[](size_t at) const { return items_[at]; }
    Item* data() { return items_; }
    const Item* data() const { return items_; }
    Item& last() { return items_[size_ - 1]; }
    const Item& last() const { return items_[size_ - 1]; }
    Item* begin() { return items_; }
    Item* end() { return items_ + size_; }
    const Item* begin() const { return items_; }
    const Item* end() const { return items_ + size_; }

    // Room for so many more. False, and the array as it was, when memory runs out.
    bool has_room(size_t more) {
        if (capacity_ - size_ >= more) return true;
        constexpr size_t kMost = SIZE_MAX / 2 / sizeof(Item);
        const size_t capacity = more > kMost || capacity_ > kMost ? 0 : grown_capacity(size_ + more);
        auto* items = capacity == 0 ? nullptr : static_cast<Item*>(std::realloc(items_, capacity * sizeof(Item)));
        if (noted(items) == nullptr) return false;
        items_ = items;
        capacity_ = capacity;
        return true;
    }

    bool add(Item item) {
        if (!has_room(1)) return false;
        items_[size_++] = item;
        return true;
    }

    // Copies of so many items, which are no part of this array.
    bool add_all(const Item* items, size_t count) {
        if (!has_room(count)) return false;
        if (count > 0) std::memcpy(items_ + size_, items, count * sizeof(Item));
        size_ += count;
        return true;
    }

    void cut(size_t size) { size_ = size; }

private:
    static constexpr size_t kFirstCapacity = 16;

    size_t grown_capacity(size_t wanted) const {
        const size_t doubled = capacity_ == 0 ? kFirstCapacity : capacity_ * 2;
        return doubled < wanted ? wanted : doubled;
    }

    Item* items_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

}  // namespace kcnvrt
