// Who may read a result: nobody who could not read what it was made of.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

namespace kcnvrt {

struct Permissions {
    mode_t mode;
    std::optional<gid_t> group;  // of whom the group's bits speak, none where they fit any group

    // The mode of a file of another group: those bits would let other people in.
    mode_t in_group(gid_t other) const;
};

Permissions permissions_of(const struct stat& file);

// What all of the files allow, and that their owner may write. A pipe is for its reader alone. Without a file these are
// the permissions of any new file.
Permissions permissions_of(const std::vector<std::string>& files);

}  // namespace kcnvrt
