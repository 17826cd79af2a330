// arena.h: the memory that Jansson's trees lie in. Taking some is adding to a pointer, and nothing is given back
// singly: a tree costs half as much to make and nothing to release.
//
// Each thread has two arenas. What Jansson allocates goes to the document's, which can be emptied when a document is
// done, or back to a mark; while a LastingMemory lives it goes to the other one, for a base or a patch that many
// documents share. A tree belongs to the thread that made it.
#pragma once

#include <cstddef>

namespace kcnvrt {

// Gives Jansson these arenas, in the whole process. Before the first call of Jansson's, which keeps some memory for
// good.
void install_arenas();
bool are_arenas_installed();

// How many allocations failed since the process began, in any thread. Whoever sees one fail elsewhere adds it.
std::size_t failed_tree_allocations();
void count_failed_allocation();

struct ArenaPart;

class Arena {
public:
    // Where an arena stands. Good until the arena goes back to an earlier mark.
    struct Mark {
        ArenaPart* part = nullptr;
        char* at = nullptr;
    };

    // For anything that lies in a tree; null, and counted, when memory ends.
    void* allocate(std::size_t size) {
        if (size > static_cast<std::size_t>(end_ - at_)) return allocate_beyond(size);
        last_ = at_;
        at_ += rounded(size);
        return last_;
    }

    // Takes back the last block; any other stays until the arena goes back.
    void release(const void* block) {
        if (block != last_ || last_ == nullptr) return;
        at_ = last_;
        last_ = nullptr;
    }

    Mark mark() const { return {part_, at_}; }

    // Takes back all that came after the mark, and keeps the memory for what comes next.
    void go_back(Mark mark);
    void clear() { go_back({}); }

    // Gives all memory back to the system. A thread does so before it ends.
    void return_memory();

    // How many bytes it has of the system.
    std::size_t size() const;

private:
    static constexpr std::size_t kAlignment = 8;

    static std::size_t rounded(std::size_t size) { return (size + kAlignment - 1) & ~(kAlignment - 1); }

    void* allocate_beyond(std::size_t size);
    bool go_on(std::size_t size);
    bool prepare(std::size_t size);
    bool enter_next_part(std::size_t size);
    void stand(ArenaPart* part, char* at);

    char* at_ = nullptr;
    char* end_ = nullptr;  // of what is prepared, perhaps not of the part
    char* last_ = nullptr;
    ArenaPart* part_ = nullptr;
    ArenaPart* first_ = nullptr;
};

// This thread's.
Arena& document_arena();
Arena& lasting_arena();

// While one lives, this thread's trees are made in the lasting arena.
class LastingMemory {
public:
    LastingMemory();
    ~LastingMemory();
    LastingMemory(const LastingMemory&) = delete;
    LastingMemory& operator=(const LastingMemory&) = delete;

private:
    unsigned before_;
};

}  // namespace kcnvrt
