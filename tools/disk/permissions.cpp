#include "disk/permissions.h"

#include <unistd.h>

#include "disk/input.h"

namespace kcnvrt {

namespace {

constexpr mode_t kAll = 0777;
constexpr mode_t kAnyNewFile = 0666;
constexpr mode_t kOwner = 0700;
constexpr mode_t kOthers = 0007;
constexpr mode_t kOwnersAlone = 0600;
constexpr unsigned kGroup = 3;  // where the group's bits stand

// Anybody who is not the owner gets what both the group and the others had.
mode_t without_group(mode_t mode) {
    const mode_t both = (mode >> kGroup) & mode & kOthers;
    return (mode & kOwner) | (both << kGroup) | both;
}

Permissions permissions_of_input(const std::string& file) {
    struct stat status;
    const int missing = file == kStandardStream ? fstat(STDIN_FILENO, &status) : stat(file.c_str(), &status);
    if (missing != 0 || !S_ISREG(status.st_mode)) return {kOwnersAlone, std::nullopt};
    return permissions_of(status);
}

Permissions in_common(const Permissions& one, const Permissions& other) {
    if (one.group == other.group) return {one.mode & other.mode, one.group};
    return {without_group(one.mode) & without_group(other.mode), std::nullopt};
}

}  // namespace

mode_t Permissions::in_group(gid_t other) const {
    return group && *group != other ? without_group(mode) : mode;
}

Permissions permissions_of(const struct stat& file) {
    return {file.st_mode & kAll, file.st_gid};
}

Permissions permissions_of(const std::vector<std::string>& files) {
    if (files.empty()) return {kAnyNewFile, std::nullopt};
    Permissions common = permissions_of_input(files.front());
    for (const std::string& file : files) common = in_common(common, permissions_of_input(file));
    common.mode |= S_IWUSR;
    return common;
}

}  // namespace kcnvrt
