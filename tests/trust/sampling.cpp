// Samples by what is asked for in the environment, and by how the tests were compiled.
#include "sampling.h"

#include <algorithm>
#include <cstdlib>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
constexpr size_t kSlowness = 10;
#else
constexpr size_t kSlowness = 1;
#endif

// KCNVRT_SAMPLE=N in the environment says how slow what is tested is, where the tests themselves are not.
size_t slowness() {
    const char* const sample = std::getenv("KCNVRT_SAMPLE");
    return sample == nullptr ? kSlowness : std::max<size_t>(1, std::strtoul(sample, nullptr, 10));
}

}  // namespace

bool is_thorough() {
    return std::getenv("KCNVRT_THOROUGH") != nullptr;
}

bool is_fast() {
    return slowness() == 1;
}

size_t stride(size_t ordinary) {
    return is_thorough() ? 1 : ordinary * slowness();
}

size_t repetitions(size_t ordinary) {
    return is_thorough() ? ordinary : std::max<size_t>(1, ordinary / slowness());
}
