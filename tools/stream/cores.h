// How many threads are worth having.
#pragma once

#include <cstddef>

namespace kcnvrt {

// The cores that this process may use: those it is bound to, and no more than its control group gets time of.
std::size_t usable_cores();

}  // namespace kcnvrt
