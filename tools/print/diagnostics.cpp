#include "print/diagnostics.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace kcnvrt {

namespace {

constexpr int kFirstFreeDescriptor = STDERR_FILENO + 1;

std::string read_from_start(int file) {
    std::string text;
    std::array<char, 4096> part;
    ssize_t got;
    while ((got = pread(file, part.data(), part.size(), static_cast<off_t>(text.size()))) > 0) {
        text.append(part.data(), static_cast<std::size_t>(got));
    }
    return text;
}

}  // namespace

StdoutSetAside::StdoutSetAside() {
    std::fflush(stdout);
    stdout_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, kFirstFreeDescriptor);
    aside_ = memfd_create("kcnvrt diagnostics", MFD_CLOEXEC);
    // Where there is no such file, the diagnostics go to standard error as they come.
    dup2(aside_ >= 0 ? aside_ : STDERR_FILENO, STDOUT_FILENO);
}

StdoutSetAside::~StdoutSetAside() {
    give_back();
    if (aside_ >= 0) close(aside_);
}

std::string StdoutSetAside::restore() {
    give_back();
    return aside_ >= 0 ? read_from_start(aside_) : std::string();
}

void StdoutSetAside::give_back() {
    if (stdout_ < 0) return;
    std::fflush(stdout);
    dup2(stdout_, STDOUT_FILENO);
    close(stdout_);
    stdout_ = -1;
}

}  // namespace kcnvrt
