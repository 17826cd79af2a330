#include "disk/named_file.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <string_view>
#include <utility>

#include "disk/input.h"

namespace kcnvrt {

namespace {

constexpr int kMostLinks = 40;

std::size_t last_start(const std::string& path) {
    return path.rfind('/') + 1;
}

// With its slash; empty for a plain name.
std::string folder_of(const std::string& path) {
    return path.substr(0, last_start(path));
}

std::string last_of(const std::string& path) {
    return path.substr(last_start(path));
}

NamedFile folder_itself(const std::string& path) {
    return NamedFile(last_start(path) == 0 ? "." : folder_of(path));
}

}  // namespace

std::string follow_links(std::string path) {
    std::array<char, PATH_MAX> target;
    for (int links = 0; links < kMostLinks; ++links) {
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length < 0) break;
        const std::string_view text(target.data(), static_cast<std::size_t>(length));
        path = text.starts_with('/') ? std::string(text) : folder_of(path) + std::string(text);
    }
    return path;
}

NamedFile::NamedFile(std::string name, int standard_stream) : name_(std::move(name)) {
    const bool is_stream = standard_stream >= 0 && name_ == kStandardStream;
    is_there_ = (is_stream ? fstat(standard_stream, &status_) : stat(name_.c_str(), &status_)) == 0;
    if (is_there_) return;
    error_ = errno;
    path_ = follow_links(name_);
}

bool NamedFile::is(const NamedFile& other) const {
    return is_there_ && other.is_there_ && status_.st_dev == other.status_.st_dev &&
           status_.st_ino == other.status_.st_ino;
}

bool NamedFile::will_be(const NamedFile& other) const {
    if (is(other)) return true;
    if (is_there_ || other.is_there_) return false;
    if (last_of(path_) != last_of(other.path_)) return false;
    return folder_of(path_) == folder_of(other.path_) || folder_itself(path_).is(folder_itself(other.path_));
}

}  // namespace kcnvrt
