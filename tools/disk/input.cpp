#include "disk/input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "failure.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kFirstCapacity = std::size_t{64} * 1024;

class Descriptor {
public:
    explicit Descriptor(const std::string& file)
        : descriptor_(file == kStandardStream ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~Descriptor() {
        if (descriptor_ > STDIN_FILENO) close(descriptor_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return descriptor_; }

private:
    int descriptor_;
};

// Bytes that grow without being cleared first, as those of a std::string would be.
class GrowingBytes {
public:
    explicit GrowingBytes(std::size_t capacity) { grow(capacity); }

    // One read at the end. Like read: the number of bytes, 0 at the end of the file, -1 on failure.
    ssize_t read_some(int descriptor) {
        if (size_ == capacity_) grow(2 * capacity_);
        const ssize_t got = read(descriptor, bytes_.get() + size_, capacity_ - size_);
        if (got > 0) size_ += static_cast<std::size_t>(got);
        return got;
    }

    Text release() { return {std::move(bytes_), size_}; }

private:
    void grow(std::size_t capacity) {
        void* const bytes = std::realloc(bytes_.get(), capacity);
        if (bytes == nullptr) throw std::bad_alloc();
        static_cast<void>(bytes_.release());
        bytes_.reset(static_cast<char*>(bytes));
        capacity_ = capacity;
    }

    Allocated<char> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

[[noreturn]] void fail_to_read(const std::string& file) {
    throw Failure{kUnusableFile, file, "read", std::strerror(errno)};
}

std::size_t expected_size(int descriptor) {
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return kFirstCapacity;
    return static_cast<std::size_t>(status.st_size) + 1;  // the last byte lets the end be seen without growing
}

}  // namespace

Text read_file(const std::string& file) {
    const Descriptor descriptor(file);
    if (descriptor.get() < 0) fail_to_read(file);
    GrowingBytes bytes(expected_size(descriptor.get()));
    ssize_t got;
    do {
        got = bytes.read_some(descriptor.get());
        if (got < 0 && errno != EINTR) fail_to_read(file);
    } while (got != 0);
    return bytes.release();
}

}  // namespace kcnvrt
