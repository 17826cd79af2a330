// Reader, writer and scanner of the text layer against Jansson's parser and printer. The bytes: options and layout, the
// text.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "bytes.h"
#include "start.h"
#include "text/differential.h"

namespace {

using namespace kcnvrt::text;

ReadOptions options_of(uint8_t bits) {
    return {.any_value = (bits & 1) != 0, .nul_in_strings = (bits & 2) != 0};
}

Layout layout_of(uint8_t bits) {
    return {.compact = (bits & 4) != 0, .indent = static_cast<unsigned>(bits) >> 3};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const uint8_t bits = bytes.next();
    const std::string_view text = bytes.take(size);
    const Finding finding = compare_with_jansson(text, options_of(bits), layout_of(bits));
    if (finding.problem.empty()) return 0;
    std::fprintf(console, "\n%s\n", finding.problem.c_str());
    std::fflush(console);
    std::abort();
}
