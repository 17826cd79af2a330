// real.h: numbers with a fraction, as JSON writes them, whatever the locale.
#pragma once

#include <cstddef>
#include <string_view>

namespace kcnvrt::text {

// -2.2250738585072014e-308
inline constexpr size_t kLongestReal = 32;

// Writes the fewest digits that read back as the same number, in the notation of json_dumps: never an integer's, so
// that it stays a real. `place` has kLongestReal bytes; returns the end. real_charconv.cpp does it by the C++ library,
// real_stdio.cpp where that cannot or would be too large.
char* print_real(double value, char* place);

// Reads a number with a fraction or an exponent whose syntax is JSON's. False for what no double holds (1e400), and
// when memory ends. The C++ library's from_chars for reals would need its exceptions, and in WebAssembly there is none.
bool read_real(std::string_view number, double& value);

}  // namespace kcnvrt::text
