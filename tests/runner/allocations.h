// allocations.h: counts what Jansson allocates.
#pragma once

// From now on; to be called before Jansson has allocated anything.
void count_allocations();

// How many blocks of Jansson's are allocated at the moment.
long live_allocations();
