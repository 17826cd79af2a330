#include "line_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "disk/permissions.h"
#include "ending.h"
#include "failure.h"

namespace kcnvrt {

namespace {

// A folder may give its files a group of its own.
int create(const std::string& file, const Permissions& allowed) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, allowed.in_group(getegid()));
    struct stat status;
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && status.st_gid != getegid())
        fchmod(descriptor, status.st_mode & allowed.in_group(status.st_gid));
    return descriptor;
}

int empty_or_create(const std::string& file, const std::vector<std::string>& inputs) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    return descriptor < 0 && errno == ENOENT ? create(file, permissions_of(inputs)) : descriptor;
}

}  // namespace

LineFile::LineFile(int descriptor, std::string name) : descriptor_(descriptor), name_(std::move(name)) {}

LineFile::LineFile(const std::string& file, const std::vector<std::string>& inputs)
    : descriptor_(empty_or_create(file, inputs)), name_(file) {
    if (descriptor_ < 0) throw Failure{kUnusableFile, name_, "write", std::strerror(errno)};
}

LineFile::~LineFile() {
    if (descriptor_ > STDERR_FILENO) close(descriptor_);
}

void LineFile::write(std::string_view lines) {
    if (lines.empty()) return;
    const WritingLines writing;
    while (!lines.empty()) {
        const bool is_written = write_some(lines);
        const int error = errno;
        if (is_end_asked()) end(lines);
        if (is_written || error == EINTR) continue;
        take_back();
        if (descriptor_ == STDERR_FILENO) return;  // there is nobody to tell
        if (descriptor_ == STDOUT_FILENO && error == EPIPE) throw ClosedPipe{};
        throw Failure{kUnusableFile, name_, "write", std::strerror(error)};
    }
}

bool LineFile::write_some(std::string_view& lines) {
    const ssize_t written = ::write(descriptor_, lines.data(), lines.size());
    if (written <= 0) return written == 0;
    count(lines.substr(0, static_cast<std::size_t>(written)));
    lines.remove_prefix(static_cast<std::size_t>(written));
    return true;
}

void LineFile::count(std::string_view written) {
    const std::size_t line_break = written.rfind('\n');
    unfinished_ = line_break == std::string_view::npos ? unfinished_ + written.size() : written.size() - line_break - 1;
}

// Only what nobody wrote behind.
void LineFile::take_back() {
    struct stat status;
    if (unfinished_ == 0 || fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) return;
    const off_t end = lseek(descriptor_, 0, SEEK_CUR);
    const off_t line = end - static_cast<off_t>(unfinished_);
    if (end != status.st_size || line < 0 || ftruncate(descriptor_, line) != 0) return;
    lseek(descriptor_, line, SEEK_SET);
    unfinished_ = 0;
}

// A pipe gets the rest of the line, which it waits for if it has to: only another signal ends the run before.
void LineFile::end(std::string_view rest) {
    take_back();
    rest = rest.substr(0, rest.find('\n') + 1);
    while (unfinished_ != 0 && !rest.empty() && (write_some(rest) || errno == EINTR)) {
    }
    end_by_signal();
}

}  // namespace kcnvrt
