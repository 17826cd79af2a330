// arena.h: the memory that Jansson's trees lie in. Taking some is adding to a pointer, and next to nothing is given
// back singly: a tree costs half as much to make and nothing to release.
//
// What is given back, of large documents, are the tables that objects and arrays have grown out of: up to a tenth of
// all that such a document takes. The next object begins with a table of the same size.
//
// Each thread has two arenas. What Jansson allocates goes to the document's, which can be emptied when a document is
// done, or back to a mark; while a LastingMemory lives it goes to the other one, for a base or a patch that many
// documents share. A tree belongs to the thread that made it.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kcnvrt {

// Gives Jansson these arenas, in the whole process. Before the first call of Jansson's, which keeps some memory for
// good.
void install_arenas();
bool are_arenas_installed();

// How many allocations failed since the process began, in any thread. Whoever sees one fail elsewhere adds it.
std::size_t failed_tree_allocations();
void count_failed_allocation();

struct ArenaPart;

// The tables of objects and arrays in an arena: which blocks are some, and which of those nobody uses any more. The
// size of each is a power of two. One that is forgotten costs its memory until the arena goes back, and nothing else.
class ArenaTables {
public:
    static bool is_size(std::size_t size) { return size >= kSmallest && (size & (size - 1)) == 0; }

    // A free one of that size, or null.
    void* take(std::size_t size);
    void remember(void* table, std::size_t size);

    // Keeps the table for whoever needs one of its size next; leaves alone what is none.
    void put_back(void* block);
    void forget(const void* block);
    void forget_all() { *this = {}; }

private:
    static constexpr std::size_t kSmallest = 128;  // the first one of an object

    struct Table {
        void* start;
        std::size_t size;
    };
    struct Free {
        Free* next;
    };

    Free*& free_of(std::size_t size) { return free_[static_cast<std::size_t>(std::countr_zero(size))]; }
    Table& slot_of(const void* block) {
        return known_[reinterpret_cast<std::uintptr_t>(block) / kSmallest % known_.size()];
    }

    std::array<Table, 128> known_ = {};  // by their addresses: the later one of two in one slot
    std::array<Free*, 64> free_ = {};    // by the powers that their sizes are
};

class Arena {
public:
    // Where an arena stands. Good until the arena goes back to an earlier mark.
    struct Mark {
        ArenaPart* part = nullptr;
        char* at = nullptr;
    };

    // For anything that lies in a tree; null, and counted, when memory ends.
    void* allocate(std::size_t size) {
        return ArenaTables::is_size(size) && keeps_tables_ ? allocate_table(size) : add(size);
    }

    // Takes back the last block, and tables; any other stays until the arena goes back.
    void release(void* block) {
        if (block != last_) return put_back(block);
        if (block == nullptr) return;
        tables_.forget(block);
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

    void* add(std::size_t size) {
        if (size > static_cast<std::size_t>(end_ - at_)) return add_beyond(size);
        last_ = at_;
        at_ += rounded(size);
        return last_;
    }

    void put_back(void* block) {
        if (keeps_tables_) tables_.put_back(block);
    }
    void* allocate_table(std::size_t size);
    void* add_beyond(std::size_t size);
    bool go_on(std::size_t size);
    bool prepare(std::size_t size);
    bool enter_next_part(std::size_t size);
    void stand(ArenaPart* part, char* at);

    char* at_ = nullptr;
    char* end_ = nullptr;  // of what is prepared, perhaps not of the part
    char* last_ = nullptr;
    ArenaPart* part_ = nullptr;
    ArenaPart* first_ = nullptr;
    ArenaTables tables_;
    bool keeps_tables_ = false;  // from where on it is worth the time
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
