// A process is started, waited for, and asked for its CPU time.
#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

namespace kcnvrt::bench {

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double run_once(const char* const* command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child;
    const int failed = posix_spawn(&child, command[0], &actions, nullptr, const_cast<char* const*>(command), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status;
    rusage usage;
    if (failed != 0 || wait4(child, &status, 0, &usage) != child || status != 0) return -1;
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

double cpu_seconds(const char* const* command, int runs) {
    double least = run_once(command);
    for (int run = 1; run < runs && least >= 0; ++run) least = std::min(least, run_once(command));
    return least;
}

}  // namespace kcnvrt::bench
