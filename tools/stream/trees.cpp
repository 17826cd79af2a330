#include "trees.h"

#include <cstddef>

#include "memory/arena.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kMostMemoryKept = std::size_t{32} * 1024 * 1024;

}  // namespace

void give_back_trees() {
    if (!are_arenas_installed()) return;
    give_back_large_trees();
    document_arena().clear();
}

void give_back_large_trees() {
    if (document_arena().size() > kMostMemoryKept) document_arena().return_memory();
}

}  // namespace kcnvrt
