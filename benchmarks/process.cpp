// A process is started, waited for, and asked for its CPU time.
#include "process.h"

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kcnvrt::bench {

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

[[noreturn]] void give_up(const Command& command) {
    std::fprintf(stderr, "%s failed\n", command[0].c_str());
    std::exit(EXIT_FAILURE);
}

Cost run(const Command& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child;
    const int failed = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status;
    rusage usage;
    if (failed != 0 || wait4(child, &status, 0, &usage) != child || status != 0) give_up(command);
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), static_cast<double>(usage.ru_maxrss)};
}

}  // namespace

void stay_on_one_core() {
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) != 0) return;
    int last = CPU_SETSIZE - 1;
    while (last > 0 && !CPU_ISSET(last, &cores)) --last;
    CPU_ZERO(&cores);
    CPU_SET(last, &cores);
    sched_setaffinity(0, sizeof cores, &cores);
}

std::vector<std::vector<Cost>> run_in_turn(const std::vector<Command>& commands, int rounds) {
    std::vector<std::vector<Cost>> costs(commands.size());
    for (const Command& command : commands) run(command);  // for what the system keeps in memory from then on
    for (int round = 0; round < rounds; ++round)
        for (size_t i = 0; i < commands.size(); ++i) costs[i].push_back(run(commands[i]));
    return costs;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double median_ratio(const std::vector<Cost>& costs, const std::vector<Cost>& others) {
    std::vector<double> ratios;
    for (size_t i = 0; i < costs.size(); ++i) ratios.push_back(costs[i].seconds / others[i].seconds);
    return median(ratios);
}

double median_of(const std::vector<Cost>& costs, double Cost::*part) {
    std::vector<double> values;
    for (const Cost& cost : costs) values.push_back(cost.*part);
    return median(values);
}

}  // namespace kcnvrt::bench
