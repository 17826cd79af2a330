#include "memory/arena_memory.h"

#include "memory/arena.h"

namespace kcnvrt {

namespace {

using text::TreeMemory;

TreeMemory::Mark mark() {
    const Arena::Mark here = document_arena().mark();
    return {here.part, here.at};
}

void go_back(TreeMemory::Mark mark) {
    document_arena().go_back({static_cast<ArenaPart*>(mark.part), mark.at});
}

}  // namespace

const TreeMemory& arena_memory() {
    static constexpr TreeMemory kMemory = {mark, go_back};
    return kMemory;
}

}  // namespace kcnvrt
