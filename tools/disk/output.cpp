#include "disk/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "disk/input.h"
#include "disk/named_file.h"
#include "disk/permissions.h"
#include "failure.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
constexpr mode_t kOwnersAlone = 0600;

bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) return false;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// With its slash; empty for a plain name.
std::string folder_of(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

gid_t group_of(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 ? status.st_gid : getegid();
}

// The owner and the permissions of the file to be replaced, as far as the system lets them be given.
void inherit(int descriptor, const struct stat& old) {
    if (fchown(descriptor, old.st_uid, old.st_gid) != 0) {
        [[maybe_unused]] const int grouped = fchown(descriptor, static_cast<uid_t>(-1), old.st_gid);
    }
    fchmod(descriptor, permissions_of(old).in_group(group_of(descriptor)));
}

int create_for_owner(PassingFile& file, const std::string& folder, const struct stat& old) {
    const int descriptor = file.create(folder, kOwnersAlone);
    if (descriptor >= 0) inherit(descriptor, old);
    return descriptor;
}

// The system gives a new file its group, and takes from its permissions what the umask says. Where it is a group that
// could not read the inputs the file is made anew, so that it was never open to that group.
int create_like(PassingFile& file, const std::string& folder, const Permissions& inputs) {
    const int descriptor = file.create(folder, inputs.mode);
    if (descriptor < 0) return -1;
    const mode_t mode = inputs.in_group(group_of(descriptor));
    if (mode == inputs.mode) return descriptor;
    close(descriptor);
    return file.create(folder, mode);
}

// By its name, or by the way of /dev/stdout, which may lead to a file that has no name any more.
bool is_standard_output(const std::string& file) {
    struct stat named;
    struct stat standard;
    if (file == kStandardStream) return true;
    return stat(file.c_str(), &named) == 0 && fstat(STDOUT_FILENO, &standard) == 0 && named.st_dev == standard.st_dev &&
           named.st_ino == standard.st_ino;
}

// What is neither, a device or a pipe, cannot be replaced.
bool is_regular_or_missing(const std::string& file) {
    struct stat status;
    return stat(file.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT;
}

}  // namespace

Output::Output(const std::string& file, const std::vector<std::string>& inputs) : name_(file) {
    buffer_.reserve(kBufferSize);
    if (is_standard_output(file)) {
        descriptor_ = STDOUT_FILENO;
    } else if (is_regular_or_missing(file)) {
        path_ = follow_links(file);  // which are kept
        descriptor_ = create_beside(inputs);
    } else {
        descriptor_ = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    }
    if (descriptor_ < 0) fail(errno);
}

Output::~Output() {
    close_file();
}

int Output::create_beside(const std::vector<std::string>& inputs) {
    struct stat old;
    const std::string folder = folder_of(path_);
    if (stat(path_.c_str(), &old) == 0) return create_for_owner(passing_, folder, old);
    return create_like(passing_, folder, permissions_of(inputs));
}

// A large text is written as it is, not copied first.
bool Output::put(std::string_view text) {
    if (text.size() >= kBufferSize) {
        if (flush() && !write_all(descriptor_, text)) error_ = errno;
        return error_ == 0;
    }
    buffer_.append(text);
    return error_ == 0 && (buffer_.size() < kBufferSize || flush());
}

bool Output::flush() {
    if (error_ == 0 && !write_all(descriptor_, buffer_)) error_ = errno;
    buffer_.clear();
    return error_ == 0;
}

void Output::finish() {
    flush();
    // A power cut after the renaming must not leave the new name and nothing under it.
    if (error_ == 0 && !path_.empty() && fsync(descriptor_) != 0) error_ = errno;
    close_file();
    if (error_ != 0) fail(error_);
    if (path_.empty()) return;
    if (!passing_.rename_to(path_)) fail(errno);
}

// Standard output stays open: it is not this object's.
void Output::close_file() {
    if (descriptor_ > STDERR_FILENO && close(descriptor_) != 0 && error_ == 0) error_ = errno;
    descriptor_ = -1;
}

void Output::fail(int error) const {
    if (error == EPIPE) throw ClosedPipe{};
    throw Failure{kUnusableFile, name_, "write", std::strerror(error)};
}

void write_result(const std::string& file, const std::vector<std::string>& inputs, std::string_view text) {
    Output output(file, inputs);
    output.put(text);
    output.put("\n");
    output.finish();
}

void write_text(const std::string& file, std::string_view text) {
    Output output(file, {});
    output.put(text);
    output.finish();
}

}  // namespace kcnvrt
