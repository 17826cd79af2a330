#include "basis/buffer.h"

#include <algorithm>
#include <cstdint>

namespace kcnvrt::text {

namespace {

constexpr size_t kFirstCapacity = 4096;

}  // namespace

bool Buffer::grow(size_t more) {
    if (more > SIZE_MAX / 2 - size_) return false;
    const size_t capacity = std::max({size_ + more, 2 * capacity_, kFirstCapacity});
    char* const bytes = static_cast<char*>(std::realloc(bytes_, capacity));
    if (bytes == nullptr) return false;
    bytes_ = bytes;
    capacity_ = capacity;
    return true;
}

}  // namespace kcnvrt::text
