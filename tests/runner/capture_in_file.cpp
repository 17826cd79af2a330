// Standard output is led into a file, where the system has that.
#include "capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

std::string printed_by(const std::function<void()>& work) {
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    const int file = memfd_create("stdout", MFD_CLOEXEC);
    dup2(file, STDOUT_FILENO);
    work();
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);

    std::string text(static_cast<size_t>(lseek(file, 0, SEEK_END)), '\0');
    const ssize_t size = pread(file, text.data(), text.size(), 0);
    text.resize(size < 0 ? 0 : static_cast<size_t>(size));
    close(file);
    return text;
}
