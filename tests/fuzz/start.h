// start.h: what every target does before its first run.
#pragma once

#include <cstdio>

// Standard error as it was at the start; the tool's target puts something else in its place.
extern std::FILE* console;
