// Threads that take parts of the input, convert them, and hand in what they came to.
#pragma once

#include <cstddef>
#include <functional>

namespace kcnvrt {

// Runs `work` in so many threads, this one among them, and waits for all. Where the system gives fewer threads, those
// do it. `work` throws nothing.
void run_in_threads(std::size_t count, const std::function<void()>& work);

}  // namespace kcnvrt
