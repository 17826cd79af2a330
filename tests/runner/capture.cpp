// Standard output is led into a file for the length of a scope.
#include "capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

StdoutCapture::StdoutCapture() {
    std::fflush(stdout);
    saved_ = dup(STDOUT_FILENO);
    file_ = memfd_create("stdout", MFD_CLOEXEC);
    dup2(file_, STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture() {
    restore();
    close(file_);
}

std::string StdoutCapture::finish() {
    restore();
    std::string text(static_cast<size_t>(lseek(file_, 0, SEEK_END)), '\0');
    const ssize_t size = pread(file_, text.data(), text.size(), 0);
    text.resize(size < 0 ? 0 : static_cast<size_t>(size));
    return text;
}

void StdoutCapture::restore() {
    if (saved_ < 0) return;
    std::fflush(stdout);
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
    saved_ = -1;
}
