// small_array.h: an array for as many items as a walk may find, which takes no memory while those are few.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <type_traits>

#include "shortage.h"

namespace kcnvrt {

template <class Item>
class SmallArray {
    static_assert(std::is_trivially_destructible_v<Item>);

public:
    // Of that many items at most.
    explicit SmallArray(size_t capacity) : items_{own()} {
        if (capacity <= kOwn) return;
        void* const memory = capacity > SIZE_MAX / sizeof(Item) ? nullptr : std::malloc(capacity * sizeof(Item));
        items_ = static_cast<Item*>(noted(memory));
    }
    ~SmallArray() {
        if (items_ != own()) std::free(items_);
    }
    SmallArray(const SmallArray&) = delete;
    SmallArray& operator=(const SmallArray&) = delete;

    // Memory ran out: nothing may be added.
    bool failed() const { return items_ == nullptr; }

    void add(const Item& item) { new (items_ + size_++) Item{item}; }

    size_t size() const { return size_; }
    Item* begin() { return items_; }
    Item* end() { return items_ + size_; }
    const Item* begin() const { return items_; }
    const Item* end() const { return items_ + size_; }

private:
    static constexpr size_t kOwn = 32;

    Item* own() { return reinterpret_cast<Item*>(own_); }

    alignas(Item) unsigned char own_[kOwn * sizeof(Item)];
    Item* items_;
    size_t size_ = 0;
};

}  // namespace kcnvrt
