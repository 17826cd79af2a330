// Reading files and standard input. What cannot be read throws a Failure.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>

namespace kcnvrt {

inline constexpr char kStandardStream[] = "-";

struct FreeBytes {
    void operator()(char* bytes) const { std::free(bytes); }
};

struct Text {
    std::unique_ptr<char, FreeBytes> bytes;
    std::size_t size = 0;
};

// All that a file holds.
Text read_file(const std::string& file);

}  // namespace kcnvrt
