// buffer.h: bytes that grow.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace kcnvrt::text {

// Grows by malloc and says so when memory ends; what it holds then stays.
class Buffer {
public:
    Buffer() = default;
    ~Buffer() { std::free(bytes_); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    const char* data() const { return bytes_; }
    size_t size() const { return size_; }
    std::string_view view() const { return {bytes_, size_}; }

    // Room for `more` bytes behind the last one; null when memory ends. What is written there counts from advance_to
    // on.
    char* room(size_t more) {
        if ((bytes_ == nullptr || capacity_ - size_ < more) && !grow(more)) return nullptr;
        return bytes_ + size_;
    }
    // The end of the room that there is.
    const char* limit() const { return bytes_ + capacity_; }
    void advance_to(const char* end) { size_ = static_cast<size_t>(end - bytes_); }

    bool append(std::string_view bytes) {
        if (bytes.empty()) return true;
        char* const end = room(bytes.size());
        if (end == nullptr) return false;
        if (!bytes.empty()) std::memcpy(end, bytes.data(), bytes.size());
        size_ += bytes.size();
        return true;
    }

    // Ends a text with a NUL, which counts.
    bool terminate() { return append({"\0", 1}); }

    void cut(size_t size) { size_ = size; }

    // Hands the bytes over: the caller frees them. Null where there never were any.
    char* release() {
        char* const bytes = bytes_;
        bytes_ = nullptr;
        size_ = capacity_ = 0;
        return bytes;
    }

private:
    bool grow(size_t more);

    char* bytes_ = nullptr;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

}  // namespace kcnvrt::text
