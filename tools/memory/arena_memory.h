// What the text layer needs to know of the arena.
#pragma once

#include "basis/tree_memory.h"

namespace kcnvrt {

// For trees of the thread that asks, where arenas are installed.
const text::TreeMemory& arena_memory();

}  // namespace kcnvrt
