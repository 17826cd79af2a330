// Allocations are counted on their way, and those refused that a test has chosen.
#include "shortage.h"

#include <jansson.h>

#include <climits>
#include <cstddef>

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* block, size_t size);
char* __real_strdup(const char* text);
void __real_free(void* block);
json_t* __real_json_loads(const char* text, size_t flags, json_error_t* error);

void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* block, size_t size);
char* __wrap_strdup(const char* text);
void __wrap_free(void* block);
json_t* __wrap_json_loads(const char* text, size_t flags, json_error_t* error);
}

namespace {

constexpr long kNever = LONG_MAX;

long asked_for = 0;
long failing_from = kNever;
long failing_to = kNever;
bool has_failed = false;
bool is_suspended = false;
long live = 0;

bool grants() {
    if (is_suspended) return true;
    const long number = asked_for++;
    if (number < failing_from || number >= failing_to) return true;
    has_failed = true;
    return false;
}

template <class Block>
Block* counted(Block* block) {
    if (block != nullptr) ++live;
    return block;
}

}  // namespace

void* __wrap_malloc(size_t size) {
    return grants() ? counted(__real_malloc(size)) : nullptr;
}

void* __wrap_calloc(size_t count, size_t size) {
    return grants() ? counted(__real_calloc(count, size)) : nullptr;
}

void* __wrap_realloc(void* block, size_t size) {
    if (!grants()) return nullptr;
    void* const moved = __real_realloc(block, size);
    return block == nullptr ? counted(moved) : moved;
}

char* __wrap_strdup(const char* text) {
    return grants() ? counted(__real_strdup(text)) : nullptr;
}

void __wrap_free(void* block) {
    if (block != nullptr) --live;
    __real_free(block);
}

// Parsing counts as one allocation and fails as a whole: inside, Jansson 2.14 does not survive every failure (a token
// that outgrows its buffer is freed twice), and what happens there is not this library's to decide.
json_t* __wrap_json_loads(const char* text, size_t flags, json_error_t* error) {
    if (!grants()) return nullptr;
    is_suspended = true;
    json_t* const value = __real_json_loads(text, flags, error);
    is_suspended = false;
    return value;
}

void lead_jansson_here() {
    json_set_alloc_funcs(__wrap_malloc, __wrap_free);
}

void start_shortage(long allocation, Failing failing) {
    asked_for = 0;
    failing_from = allocation;
    failing_to = failing == Failing::kOnce && allocation != kNever ? allocation + 1 : kNever;
    has_failed = false;
}

bool end_shortage() {
    failing_from = kNever;
    return has_failed;
}

long allocations_asked_for() {
    return asked_for;
}

long live_blocks() {
    return live;
}
