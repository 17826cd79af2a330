#include "memory/arena.h"

#include <jansson.h>
#include <sys/mman.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <new>
#include <utility>

namespace kcnvrt {

// A piece of memory from the system. Its bytes stand behind it.
struct ArenaPart {
    ArenaPart* next;
    std::size_t size;      // with this head
    std::size_t prepared;  // the system has these bytes in place already

    char* start() { return reinterpret_cast<char*>(this + 1); }
    char* at(std::size_t offset) { return reinterpret_cast<char*>(this) + offset; }
};

namespace {

constexpr std::size_t kFirstPart = std::size_t{256} * 1024;
constexpr std::size_t kLastWithoutTables = std::size_t{512} * 1024;
constexpr std::size_t kLargestPart = std::size_t{64} * 1024 * 1024;
// Pages that the system brings in one by one, as they are touched, cost more than the conversion of what they hold.
constexpr std::size_t kPrepared = std::size_t{64} * 1024;

std::atomic<std::size_t> failures{0};

enum Use : unsigned { kDocument, kLasting };

thread_local constinit Arena arenas[2];
thread_local constinit Use current = kDocument;

std::size_t rounded_up(std::size_t size, std::size_t unit) {
    return (size + unit - 1) / unit * unit;
}

ArenaPart* map_part(std::size_t size) {
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return nullptr;
    auto* const part = static_cast<ArenaPart*>(memory);
    part->size = size;
    return part;
}

// At least `least` bytes, twice the part before where the system has them.
ArenaPart* new_part(std::size_t least, const ArenaPart* before) {
    const std::size_t usual = before == nullptr ? kFirstPart : std::min(2 * before->size, kLargestPart);
    ArenaPart* const part = map_part(std::max(usual, least));
    return part != nullptr || usual <= least ? part : map_part(least);
}

void* allocate(std::size_t size) {
    return arenas[current].allocate(size);
}

void release(void* block) {
    arenas[current].release(block);
}

}  // namespace

void install_arenas() {
    json_set_alloc_funcs(allocate, release);
}

bool are_arenas_installed() {
    json_malloc_t allocator;
    json_get_alloc_funcs(&allocator, nullptr);
    return allocator == allocate;
}

std::size_t failed_tree_allocations() {
    return failures.load(std::memory_order_relaxed);
}

void count_failed_allocation() {
    failures.fetch_add(1, std::memory_order_relaxed);
}

void* ArenaTables::take(std::size_t size) {
    Free*& first = free_of(size);
    return first == nullptr ? nullptr : std::exchange(first, first->next);
}

void ArenaTables::remember(void* table, std::size_t size) {
    slot_of(table) = {table, size};
}

void ArenaTables::put_back(void* block) {
    Table& table = slot_of(block);
    if (block == nullptr || table.start != block) return;
    Free*& first = free_of(table.size);
    table = {};
    first = new (block) Free{first};
}

void ArenaTables::forget(const void* block) {
    if (slot_of(block).start == block) slot_of(block) = {};
}

void* Arena::allocate_table(std::size_t size) {
    void* const used_before = tables_.take(size);
    void* const table = used_before != nullptr ? used_before : add(size);
    if (table != nullptr) tables_.remember(table, size);
    return table;
}

void* Arena::add_beyond(std::size_t size) {
    if (size <= PTRDIFF_MAX - kLargestPart && go_on(rounded(size))) return add(size);
    count_failed_allocation();
    return nullptr;
}

bool Arena::go_on(std::size_t size) {
    return (part_ != nullptr && prepare(size)) || (enter_next_part(size) && prepare(size));
}

// In this part, if it has as much.
bool Arena::prepare(std::size_t size) {
    const auto used = static_cast<std::size_t>(at_ - part_->at(0));
    if (part_->size - used < size) return false;
    if (part_->prepared < used + size) {
        const std::size_t from = part_->prepared;
        part_->prepared = std::min(rounded_up(used + size, kPrepared), part_->size);
#ifdef MADV_POPULATE_WRITE
        // Older systems do not know it, and bring in the pages as they are touched.
        madvise(part_->at(from), part_->prepared - from, MADV_POPULATE_WRITE);
#endif
    }
    end_ = part_->at(part_->prepared);
    return true;
}

bool Arena::enter_next_part(std::size_t size) {
    ArenaPart*& place = part_ == nullptr ? first_ : part_->next;
    const std::size_t least = rounded_up(sizeof(ArenaPart) + size, kPrepared);
    if (place == nullptr || place->size < least) {
        ArenaPart* const part = new_part(least, part_);
        if (part == nullptr) return false;
        part->next = place;
        place = part;
    }
    stand(place, place->start());
    return true;
}

void Arena::stand(ArenaPart* part, char* at) {
    part_ = part;
    at_ = at;
    end_ = part == nullptr ? at : part->at(part->prepared);
    last_ = nullptr;
    keeps_tables_ = part != nullptr && part->size > kLastWithoutTables;
}

void Arena::go_back(Mark mark) {
    stand(mark.part, mark.at);
    tables_.forget_all();
}

void Arena::return_memory() {
    while (first_ != nullptr) {
        ArenaPart* const part = first_;
        first_ = part->next;
        munmap(part, part->size);
    }
    clear();
}

std::size_t Arena::size() const {
    std::size_t size = 0;
    for (const ArenaPart* part = first_; part != nullptr; part = part->next) size += part->size;
    return size;
}

Arena& document_arena() {
    return arenas[kDocument];
}

Arena& lasting_arena() {
    return arenas[kLasting];
}

LastingMemory::LastingMemory() : before_(current) {
    current = kLasting;
}

LastingMemory::~LastingMemory() {
    current = static_cast<Use>(before_);
}

}  // namespace kcnvrt
