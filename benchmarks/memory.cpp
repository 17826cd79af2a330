// Prints, for every conversion, its allocations against the fewest that its result needs, the bytes of the result and
// how far the heap rose above it on the way. Every allocation of the process is counted, Jansson's and our own.
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "subjects.h"
#include "unshared_nodes.h"

using namespace kcnvrt;
using namespace kcnvrt::bench;

namespace {

struct Heap {
    size_t allocations = 0;
    size_t bytes = 0;
    size_t peak = 0;

    void* gained(void* memory) {
        if (memory == nullptr) return memory;
        ++allocations;
        bytes += malloc_usable_size(memory);
        peak = std::max(peak, bytes);
        return memory;
    }
    void lost(void* memory) { bytes -= malloc_usable_size(memory); }
};

Heap heap;

}  // namespace

// The C library's own names for what these replace.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void __libc_free(void* memory);

void* malloc(size_t size) {
    return heap.gained(__libc_malloc(size));
}
void* calloc(size_t count, size_t size) {
    return heap.gained(__libc_calloc(count, size));
}
void* realloc(void* memory, size_t size) {
    const size_t before = malloc_usable_size(memory);
    void* const moved = __libc_realloc(memory, size);
    if (moved != nullptr || size == 0) heap.bytes -= before;
    return heap.gained(moved);
}
void free(void* memory) {
    heap.lost(memory);
    __libc_free(memory);
}
}

int main(int argc, char** argv) {
    std::printf("%-44s %11s %11s %6s %11s %11s\n", "", "allocations", "fewest", "ratio", "bytes", "peak above");
    for (const Subject& subject : Subjects{static_cast<unsigned>(argc == 2 ? std::atoi(argv[1]) : 100)}) {
        const Heap before = heap;
        heap.peak = heap.bytes;
        const Json result = subject.convert();
        const Heap after = heap;
        const UnsharedNodes unshared = unshared_nodes(result.get(), subject.source);
        const size_t allocations = after.allocations - before.allocations;
        std::printf("%-44s %11zu %11zu %6.3f %11zu %11zu\n", subject.label.c_str(), allocations, unshared.allocations,
                    static_cast<double>(allocations) / static_cast<double>(unshared.allocations),
                    after.bytes - before.bytes, after.peak - after.bytes);
    }
}
