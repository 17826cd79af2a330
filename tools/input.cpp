#include "input.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "failure.h"

namespace kcnvrt {

namespace {

// A member given twice would lose one of its values in silence.
constexpr std::size_t kStrict = JSON_REJECT_DUPLICATES;
// A NUL inside a text is lost where a conversion handles the text as a C string, so only values that are compared and
// carried whole may hold one.
constexpr std::size_t kAnyValue = kStrict | JSON_DECODE_ANY | JSON_ALLOW_NUL;

constexpr std::size_t kFirstCapacity = 64 * 1024;

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
class Text {
public:
    explicit Text(std::size_t capacity) { grow(capacity); }
    ~Text() { std::free(bytes_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    const char* data() const { return bytes_; }
    std::size_t size() const { return size_; }

    // One read at the end. Like read: the number of bytes, 0 at the end of the file, -1 on failure.
    ssize_t read_some(int descriptor) {
        if (size_ == capacity_) grow(2 * capacity_);
        const ssize_t got = read(descriptor, bytes_ + size_, capacity_ - size_);
        if (got > 0) size_ += static_cast<std::size_t>(got);
        return got;
    }

private:
    void grow(std::size_t capacity) {
        void* const bytes = std::realloc(bytes_, capacity);
        if (bytes == nullptr) throw std::bad_alloc();
        bytes_ = static_cast<char*>(bytes);
        capacity_ = capacity;
    }

    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

[[noreturn]] void fail_to_read(const std::string& file) {
    throw Failure{kUnusableFile, file, "read", std::strerror(errno)};
}

[[noreturn]] void fail_to_parse(const std::string& file, const std::string& message) {
    throw Failure{kUnusableFile, file, "parse", message};
}

std::size_t expected_size(int descriptor) {
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return kFirstCapacity;
    return static_cast<std::size_t>(status.st_size) + 1;  // the last byte lets the end be seen without growing
}

void read_all(const Descriptor& descriptor, const std::string& file, Text& text) {
    ssize_t got;
    do {
        got = text.read_some(descriptor.get());
        if (got < 0 && errno != EINTR) fail_to_read(file);
    } while (got != 0);
}

std::string describe(const json_error_t& error) {
    return "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) + ": " + error.text;
}

Json read_json(const std::string& file, std::size_t flags) {
    const Descriptor descriptor(file);
    if (descriptor.get() < 0) fail_to_read(file);
    Text text(expected_size(descriptor.get()));
    read_all(descriptor, file, text);

    json_error_t error;
    Json value(json_loadb(text.data(), text.size(), flags, &error));
    if (!value) fail_to_parse(file, describe(error));
    return value;
}

}  // namespace

Json read_configuration(const std::string& file) {
    Json root = read_json(file, kStrict);
    if (!json_is_object(root.get())) fail_to_parse(file, "a configuration is an object, this is an array");
    return root;
}

Json read_section(const std::string& file) {
    return read_json(file, kStrict);
}

Json read_value(const std::string& file) {
    return read_json(file, kAnyValue);
}

}  // namespace kcnvrt
