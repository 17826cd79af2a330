// The allocations of the objects under test, of which one is refused.
#include "frame_memory.h"

#include <cstdint>

namespace {

// Counted down by every allocation; nothing fails at the highest value.
constexpr size_t kUnlimited = SIZE_MAX;
size_t remaining = kUnlimited;
bool is_alone = false;

bool runs_out() {
    if (remaining == kUnlimited) return false;
    if (remaining == 0) {
        if (is_alone) remaining = kUnlimited;
        return true;
    }
    --remaining;
    return false;
}

}  // namespace

OutOfMemory::OutOfMemory(size_t allocations_that_succeed) {
    remaining = allocations_that_succeed;
    is_alone = false;
}
OutOfMemory::~OutOfMemory() {
    remaining = kUnlimited;
}

OneFailure::OneFailure(size_t allocations_that_succeed) {
    remaining = allocations_that_succeed;
    is_alone = true;
}
OneFailure::~OneFailure() {
    remaining = kUnlimited;
}

extern "C" {

void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* memory, size_t size);
char* __real_strdup(const char* text);

void* __wrap_malloc(size_t size) {
    return runs_out() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(size_t count, size_t size) {
    return runs_out() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* memory, size_t size) {
    return runs_out() ? nullptr : __real_realloc(memory, size);
}
char* __wrap_strdup(const char* text) {
    return runs_out() ? nullptr : __real_strdup(text);
}
}
