// Standard output leads nowhere for the length of a scope.
#include "silence.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace {

// Both for the life of the process.
int standard_output() {
    static const int descriptor = dup(STDOUT_FILENO);
    return descriptor;
}

int nothing() {
    static const int descriptor = open("/dev/null", O_WRONLY | O_CLOEXEC);
    return descriptor;
}

}  // namespace

Silence::Silence() {
    standard_output();
    std::fflush(stdout);
    dup2(nothing(), STDOUT_FILENO);
}

Silence::~Silence() {
    std::fflush(stdout);
    dup2(standard_output(), STDOUT_FILENO);
}
