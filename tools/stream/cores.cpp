#include "cores.h"

#include <sched.h>

#include <algorithm>
#include <cstdlib>
#include <thread>

#include "disk/input.h"
#include "failure.h"

namespace kcnvrt {

namespace {

std::size_t bound_cores() {
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) == 0) return static_cast<std::size_t>(CPU_COUNT(&cores));
    return std::thread::hardware_concurrency();  // more than the set has room for
}

// Parts of a core count as one.
std::size_t cores_for(long long quota, long long period) {
    return quota <= 0 || period <= 0 ? kNoLimit : static_cast<std::size_t>((quota + period - 1) / period);
}

// "" for one that cannot be read.
std::string content_of(const std::string& file) {
    try {
        const Text text = read_file(file);
        return {text.bytes.get(), text.size};
    } catch (const Failure&) {
        return "";
    }
}

// 0 where there is none.
long long number_in(const char* text) {
    return std::strtoll(text, nullptr, 10);
}

// The one hierarchy: "QUOTA PERIOD", or "max PERIOD".
std::size_t limit_of_group(const std::string& folder) {
    const std::string limits = content_of(folder + "/cpu.max");
    const std::size_t blank = limits.find(' ');
    return blank == std::string::npos ? kNoLimit : cores_for(number_in(limits.c_str()), number_in(&limits[blank]));
}

// The hierarchy of its own that older systems have.
std::size_t limit_of_older_group(const std::string& folder) {
    return cores_for(number_in(content_of(folder + "/cpu.cfs_quota_us").c_str()),
                     number_in(content_of(folder + "/cpu.cfs_period_us").c_str()));
}

// The least of a group and of those that it is in.
std::size_t limit_of(std::size_t (*limit)(const std::string&), const std::string& groups, std::string group) {
    std::size_t least = limit(groups);
    for (; group.size() > 1 && group[0] == '/'; group.erase(group.rfind('/')))
        least = std::min(least, limit(groups + group));
    return least;
}

bool names_cpu(const std::string& controllers) {
    return ("," + controllers + ",").find(",cpu,") != std::string::npos;
}

// NUMBER:CONTROLLERS:/GROUP
std::size_t limit_by(const std::string& line, const std::string& root) {
    const std::size_t first = line.find(':');
    const std::size_t second = line.find(':', first + 1);
    if (second == std::string::npos) return kNoLimit;
    const std::string controllers = line.substr(first + 1, second - first - 1);
    const std::string group = line.substr(second + 1);
    if (controllers.empty()) return limit_of(limit_of_group, root + "/sys/fs/cgroup", group);
    if (!names_cpu(controllers)) return kNoLimit;
    return limit_of(limit_of_older_group, root + "/sys/fs/cgroup/cpu", group);
}

}  // namespace

std::size_t cores_of_groups(const std::string& root) {
    std::size_t least = kNoLimit;
    std::string groups = content_of(root + "/proc/self/cgroup");
    while (!groups.empty()) {
        const std::size_t end = std::min(groups.find('\n'), groups.size());
        least = std::min(least, limit_by(groups.substr(0, end), root));
        groups.erase(0, end + 1);
    }
    return least;
}

std::size_t usable_cores() {
    return std::max<std::size_t>(std::min(bound_cores(), cores_of_groups("")), 1);
}

}  // namespace kcnvrt
