// How many threads are worth having.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kcnvrt {

// The cores that this process may use: those it is bound to, and no more than its control group gets time of.
std::size_t usable_cores();

inline constexpr std::size_t kNoLimit = SIZE_MAX;

// How many cores the control groups of this process get time of, by the files below `root`: "" is the system's.
std::size_t cores_of_groups(const std::string& root);

}  // namespace kcnvrt
