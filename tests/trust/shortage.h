// shortage.h: memory that runs out on demand. Jansson's allocations come here by json_set_alloc_funcs, those of the
// library's objects by the linker.
#pragma once

enum class Failing { kOnce, kFromThenOn };

// To be called before Jansson has allocated anything.
void lead_jansson_here();

// The allocation of that number, counted from 0, fails; or that one and all later ones.
void start_shortage(long allocation, Failing failing);

// From now on nothing fails. Whether anything has.
bool end_shortage();

// How many allocations were asked for since start_shortage.
long allocations_asked_for();

// The blocks that are allocated at the moment.
long live_blocks();
