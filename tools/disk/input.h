// Reading files and standard input. What cannot be read throws a Failure.
#pragma once

#include <string>
#include <string_view>

#include "owned.h"

namespace kcnvrt {

inline constexpr char kStandardStream[] = "-";

struct Text {
    Allocated<char> bytes;
    std::size_t size = 0;

    std::string_view view() const { return {bytes.get(), size}; }
};

// All that a file holds.
Text read_file(const std::string& file);

}  // namespace kcnvrt
