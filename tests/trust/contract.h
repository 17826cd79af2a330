// contract.h: what holds for every conversion of anything.
#pragma once

#include <jansson.h>

#include <cstdint>
#include <string>

enum class Direction { kToOld, kToNew };

json_t* convert(Direction direction, json_t* document, struct k_err* err);

// Counts what Jansson allocates from now on; to be called before it has allocated anything.
void count_blocks();

// How a conversion went.
struct Conduct {
    size_t messages = 0;
    bool has_result = false;
    // The most that the first of the two conversions held at a time, beside what was there before, and its CPU time.
    long blocks = 0;
    long bytes = 0;
    double seconds = 0;
};

// Converts a document twice, the second time without a record, and expects: a null result was reported, every message
// has an author, the source is unchanged to its references, the two results are equal, nothing stays allocated.
Conduct expect_contract(Direction direction, json_t* document, const std::string& what);
