// generator.h: JSON texts by number, the same on every run and machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kcnvrt::text {

// Objects and arrays of every kind of value, in every way of writing it.
std::string text_number(uint64_t number);

// The same text after a few changes, which may leave it valid.
std::string damaged(std::string text, uint64_t number);

// KCNVRT_SAMPLE=N in the environment takes every N-th text or number, where a machine is slow.
uint64_t sample_step();

}  // namespace kcnvrt::text
