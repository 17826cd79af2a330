// frame_memory.h: memory that runs out on demand. The linker sends the allocations of the objects under test here.
#pragma once

#include <cstddef>

// While one lives, the allocation of that number (from 0) and all later ones fail.
class OutOfMemory {
public:
    explicit OutOfMemory(size_t allocations_that_succeed);
    ~OutOfMemory();
    OutOfMemory(const OutOfMemory&) = delete;
    OutOfMemory& operator=(const OutOfMemory&) = delete;
};

// While one lives, the allocation of that number (from 0) fails alone.
class OneFailure {
public:
    explicit OneFailure(size_t allocations_that_succeed);
    ~OneFailure();
    OneFailure(const OneFailure&) = delete;
    OneFailure& operator=(const OneFailure&) = delete;
};
