// sampling.h: how much of the larger walks is visited.
#pragma once

#include <cstddef>

// Everything: KCNVRT_THOROUGH is set in the environment.
bool is_thorough();

// Neither a sanitized build nor one that is not optimized, nor asked for a sample (KCNVRT_SAMPLE).
bool is_fast();

// Every how many-th point is visited: 1 when thorough, else `ordinary`, and more in a build that is slow.
size_t stride(size_t ordinary);

// A number of repetitions, fewer in a build that is slow.
size_t repetitions(size_t ordinary);
