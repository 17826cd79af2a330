// The contract, asserted: source, result and record are compared before and after.
#include "contract.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <ctime>

#include "fingerprint.h"
#include "k_cnvrt.h"
#include "pointer.h"
#include "silence.h"

namespace {

// What there is now, and the most there was.
struct Level {
    std::atomic<long> live{0};
    std::atomic<long> most{0};

    void add(long amount) {
        if ((live += amount) > most) most = live.load();
    }
};
Level blocks;
Level bytes;

void* counted_malloc(size_t size) {
    void* block = std::malloc(size);
    if (block == nullptr) return nullptr;
    blocks.add(1);
    bytes.add(static_cast<long>(malloc_usable_size(block)));
    return block;
}

void counted_free(void* block) {
    if (block == nullptr) return;
    blocks.add(-1);
    bytes.add(-static_cast<long>(malloc_usable_size(block)));
    std::free(block);
}

}  // namespace

json_t* convert(Direction direction, json_t* document, k_err_t* err) {
    const Silence silence;
    return direction == Direction::kToOld ? k_cnvrt_to_old(document, 0, err)
                                          : k_cnvrt_to_new(document, nullptr, 0, err);
}

void count_blocks() {
    json_set_alloc_funcs(counted_malloc, counted_free);
}

Conduct expect_contract(Direction direction, json_t* document, const std::string& what) {
    Conduct conduct;
    const uint64_t source = fingerprint(document);
    const long before = blocks.live;
    const long bytes_before = bytes.live;
    blocks.most = before;
    bytes.most = bytes_before;

    k_err_t* err = k_err_new();
    const std::clock_t start = std::clock();
    json_t* result = convert(direction, document, err);
    conduct.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    conduct.blocks = blocks.most - before;
    conduct.bytes = bytes.most - bytes_before;
    conduct.messages = k_err_count(err);
    conduct.has_result = result != nullptr;
    EXPECT_TRUE(conduct.has_result || conduct.messages > 0) << what << ": rejected without a message";
    for (size_t i = 0; i < conduct.messages; ++i) {
        EXPECT_STRNE("", k_err_function(err, i)) << what;
        EXPECT_STRNE("", k_err_message(err, i)) << what;
        const char* const pointer = k_err_pointer(err, i);
        if (document != nullptr && (pointer == nullptr || at_pointer(document, pointer) == nullptr))
            ADD_FAILURE() << what << ": " << k_err_message(err, i) << " at " << (pointer ? pointer : "no place");
    }
    const uint64_t first = fingerprint(result);
    json_decref(result);
    k_err_free(err);

    result = convert(direction, document, nullptr);
    EXPECT_EQ(conduct.has_result, result != nullptr) << what << ": the result depends on the record";
    EXPECT_EQ(first, fingerprint(result)) << what << ": two results";
    json_decref(result);

    EXPECT_EQ(before, blocks.live) << what << ": leaks";
    EXPECT_EQ(source, fingerprint(document)) << what << ": the source was changed";
    return conduct;
}
