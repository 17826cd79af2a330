// process.h: what a whole process costs.
#pragma once

namespace kcnvrt::bench {

// The least CPU seconds, user and system, that the command took in `runs` runs, its output thrown away. Negative when
// it failed.
double cpu_seconds(const char* const* command, int runs);

}  // namespace kcnvrt::bench
