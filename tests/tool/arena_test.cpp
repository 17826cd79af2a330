// The memory of the tool's trees.
#include "memory/arena.h"

#include <gtest/gtest.h>
#include <jansson.h>
#include <sys/resource.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace kcnvrt {

namespace {

// The arenas are Jansson's before its first call.
const bool installed = (install_arenas(), true);

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;

bool is_aligned(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block) % 8 == 0;
}

json_t* numbers(int count) {
    json_t* const array = json_array();
    for (int i = 0; i < count; ++i) json_array_append_new(array, json_integer(i));
    return array;
}

long long sum(const json_t* array) {
    long long sum = 0;
    for (size_t i = 0; i < json_array_size(array); ++i) sum += json_integer_value(json_array_get(array, i));
    return sum;
}

// While it lives, the process gets no more address space than it has.
class NoMoreMemory {
public:
    NoMoreMemory() {
        getrlimit(RLIMIT_AS, &before_);
        rlimit none = before_;
        none.rlim_cur = kMegabyte;
        setrlimit(RLIMIT_AS, &none);
    }
    ~NoMoreMemory() { setrlimit(RLIMIT_AS, &before_); }

private:
    rlimit before_;
};

}  // namespace

TEST(Arena, BlocksAreApartAndAligned) {
    Arena arena;
    std::vector<unsigned char*> blocks;
    const auto size = [](size_t i) { return 1 + i * 7 % 300; };
    for (size_t i = 0; i < 5000; ++i) {
        blocks.push_back(static_cast<unsigned char*>(arena.allocate(size(i))));
        ASSERT_TRUE(is_aligned(blocks.back()));
        std::memset(blocks.back(), static_cast<int>(i % 251), size(i));
    }
    for (size_t i = 0; i < blocks.size(); ++i)
        for (size_t at = 0; at < size(i); ++at) ASSERT_EQ(i % 251, blocks[i][at]);
    arena.return_memory();
    EXPECT_EQ(0U, arena.size());
}

TEST(Arena, ABlockMayBeOfAnySize) {
    Arena arena;
    for (const std::size_t size : {std::size_t{1}, kMegabyte, 3 * kMegabyte + 1, std::size_t{8}, 100 * kMegabyte}) {
        auto* const block = static_cast<char*>(arena.allocate(size));
        ASSERT_NE(nullptr, block);
        block[0] = block[size - 1] = 'x';
    }
    arena.return_memory();
}

TEST(Arena, WhatNoMachineHasFailsAndIsCounted) {
    Arena arena;
    const std::size_t before = failed_tree_allocations();
    EXPECT_EQ(nullptr, arena.allocate(SIZE_MAX));
    EXPECT_EQ(nullptr, arena.allocate(SIZE_MAX / 2));
    EXPECT_EQ(before + 2, failed_tree_allocations());
    EXPECT_NE(nullptr, arena.allocate(1));
    arena.return_memory();
}

TEST(Arena, MemoryThatEndsIsCounted) {
    Arena arena;
    ASSERT_NE(nullptr, arena.allocate(1));
    const std::size_t before = failed_tree_allocations();
    {
        const NoMoreMemory none;
        EXPECT_EQ(nullptr, arena.allocate(kMegabyte));
    }
    EXPECT_EQ(before + 1, failed_tree_allocations());
    EXPECT_NE(nullptr, arena.allocate(kMegabyte));
    arena.return_memory();
}

TEST(Arena, TheLastBlockIsTakenBackAndNoOther) {
    Arena arena;
    void* const first = arena.allocate(100);
    void* const second = arena.allocate(100);
    arena.release(first);
    EXPECT_NE(first, arena.allocate(8));
    void* const last = arena.allocate(100);
    arena.release(last);
    EXPECT_EQ(last, arena.allocate(50));
    arena.release(nullptr);
    EXPECT_NE(second, arena.allocate(1));
    arena.return_memory();
}

TEST(Arena, ATableThatIsReleasedIsTheNextOneOfItsSize) {
    Arena arena;
    arena.allocate(kMegabyte);
    void* const table = arena.allocate(256);
    void* const other = arena.allocate(256);
    arena.allocate(8);
    arena.release(table);
    arena.release(other);
    EXPECT_NE(other, arena.allocate(128));
    EXPECT_NE(other, arena.allocate(264));
    EXPECT_EQ(other, arena.allocate(256));
    EXPECT_EQ(table, arena.allocate(256));
    EXPECT_NE(table, arena.allocate(256));
    arena.release(other);
    EXPECT_EQ(other, arena.allocate(256));
    arena.return_memory();
}

TEST(Arena, WhatIsNoTableAnyMoreIsNotTakenForOne) {
    Arena arena;
    arena.allocate(kMegabyte);
    void* const table = arena.allocate(128);
    arena.release(table);
    void* const block = arena.allocate(72);
    ASSERT_EQ(table, block);
    arena.allocate(8);
    arena.release(block);
    EXPECT_NE(block, arena.allocate(128));
    arena.return_memory();
}

TEST(Arena, GoingBackForgetsTables) {
    Arena arena;
    arena.allocate(kMegabyte);
    const Arena::Mark mark = arena.mark();
    void* const released = arena.allocate(128);
    void* const kept = arena.allocate(256);
    arena.allocate(8);
    arena.release(released);
    arena.go_back(mark);
    void* const block = arena.allocate(8);
    ASSERT_EQ(released, block);
    EXPECT_NE(released, arena.allocate(128));
    arena.allocate(1000);
    arena.release(kept);
    EXPECT_NE(kept, arena.allocate(256));
    arena.return_memory();
}

TEST(Arena, WhatTablesGrewOutOfTakesNoMemory) {
    const auto grown = [](int count) {
        json_t* const object = json_object();
        for (int i = 0; i < count; ++i) json_object_set_new(object, std::to_string(i).c_str(), json_null());
        return object;
    };
    document_arena().clear();
    numbers(100000);
    grown(17);
    const char* const before = document_arena().mark().at;
    grown(17);
    const auto taken = document_arena().mark().at - before;
    EXPECT_LT(taken, 512 + 17 * 64 + 100);  // the last table, the members, the object itself
    document_arena().return_memory();
}

TEST(Arena, GoesBackToAMarkAndUsesItsMemoryAgain) {
    Arena arena;
    arena.allocate(1000);
    const Arena::Mark mark = arena.mark();
    void* const next = arena.allocate(8);
    for (int i = 0; i < 1000; ++i) arena.allocate(10000);
    const std::size_t size = arena.size();
    for (int round = 0; round < 5; ++round) {
        arena.go_back(mark);
        EXPECT_EQ(next, arena.allocate(8));
        for (int i = 0; i < 1000; ++i) arena.allocate(10000);
        EXPECT_EQ(size, arena.size());
    }
    arena.clear();
    EXPECT_EQ(size, arena.size());
    arena.return_memory();
}

TEST(Arena, KeepsWhatCameBeforeTheMark) {
    json_t* const kept = numbers(1000);
    const Arena::Mark mark = document_arena().mark();
    for (int i = 0; i < 100; ++i) {
        numbers(1000);
        document_arena().go_back(mark);
    }
    EXPECT_EQ(499500, sum(kept));
}

TEST(Arena, WhatLastsOutlivesTheDocuments) {
    json_t* lasting;
    {
        const LastingMemory memory;
        lasting = numbers(1000);
    }
    for (int i = 0; i < 100; ++i) {
        json_t* const document = numbers(2000);
        EXPECT_EQ(1999000, sum(document));
        json_decref(document);
        document_arena().clear();
    }
    EXPECT_EQ(499500, sum(lasting));
    EXPECT_LT(document_arena().size(), 2 * kMegabyte);
}

TEST(Arena, EachThreadHasItsOwn) {
    std::vector<std::thread> threads;
    std::vector<long long> sums(4);
    for (size_t i = 0; i < sums.size(); ++i)
        threads.emplace_back([&sum_of = sums[i]] {
            for (int round = 0; round < 50; ++round) {
                sum_of = sum(numbers(3000));
                document_arena().clear();
            }
            document_arena().return_memory();
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::vector<long long>(4, 4498500), sums);
}

}  // namespace kcnvrt
