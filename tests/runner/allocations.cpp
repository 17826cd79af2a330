// Jansson's allocations, counted on their way to malloc and free.
#include "allocations.h"

#include <jansson.h>

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<long> live{0};

void* counted_malloc(size_t size) {
    void* block = std::malloc(size);
    if (block != nullptr) ++live;
    return block;
}

void counted_free(void* block) {
    if (block != nullptr) --live;
    std::free(block);
}

}  // namespace

void count_allocations() {
    json_set_alloc_funcs(counted_malloc, counted_free);
}

long live_allocations() {
    return live;
}
