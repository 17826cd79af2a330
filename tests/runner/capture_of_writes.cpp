// Standard output is kept where the C library hands it to the system, which has no second descriptor for it. The linker
// leads those calls here.
#include "capture.h"

#include <sys/uio.h>
#include <unistd.h>

#include <cstdio>

namespace {

std::string* kept = nullptr;

}  // namespace

extern "C" {

ssize_t __real_writev(int file, const iovec* parts, int count);
ssize_t __wrap_writev(int file, const iovec* parts, int count);

ssize_t __wrap_writev(int file, const iovec* parts, int count) {
    if (kept == nullptr || file != STDOUT_FILENO) return __real_writev(file, parts, count);
    const size_t before = kept->size();
    for (int i = 0; i < count; ++i) kept->append(static_cast<const char*>(parts[i].iov_base), parts[i].iov_len);
    return static_cast<ssize_t>(kept->size() - before);
}
}

std::string printed_by(const std::function<void()>& work) {
    std::string text;
    std::fflush(stdout);
    kept = &text;
    work();
    std::fflush(stdout);
    kept = nullptr;
    return text;
}
