#include "workers.h"

#include <exception>
#include <thread>
#include <vector>

#include "memory/arena.h"

namespace kcnvrt {

void run_in_threads(std::size_t count, const std::function<void()>& work) {
    std::vector<std::thread> threads;
    try {
        while (threads.size() + 1 < count)
            threads.emplace_back([&work] {
                work();
                document_arena().return_memory();
            });
    } catch (const std::exception&) {
    }
    work();
    for (std::thread& thread : threads) thread.join();
}

}  // namespace kcnvrt
