// list.h: a list that grows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

namespace kcnvrt::text {

// Of values that may be copied as bytes. Grows by malloc and says so when memory ends; what it holds then stays.
template <typename Value>
class List {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    List() = default;
    ~List() { std::free(values_); }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    Value* data() { return values_; }
    Value& operator[](size_t index) { return values_[index]; }
    const Value& operator[](size_t index) const { return values_[index]; }
    Value* begin() { return values_; }
    Value* end() { return values_ + size_; }
    const Value* begin() const { return values_; }
    const Value* end() const { return values_ + size_; }

    bool append(const Value& value) {
        if (size_ == capacity_ && !grow()) return false;
        values_[size_++] = value;
        return true;
    }

    // Forgets the values from that one on.
    void cut(size_t size) { size_ = size; }

private:
    bool grow() {
        const size_t capacity = capacity_ == 0 ? kFirstCapacity : 2 * capacity_;
        if (capacity > SIZE_MAX / sizeof(Value)) return false;
        auto* const values = static_cast<Value*>(std::realloc(values_, capacity * sizeof(Value)));
        if (values == nullptr) return false;
        values_ = values;
        capacity_ = capacity;
        return true;
    }

    static constexpr size_t kFirstCapacity = 16;

    Value* values_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

}  // namespace kcnvrt::text
