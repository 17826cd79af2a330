// differential.h: reader and writer against Jansson's.
#pragma once

#include <string>
#include <string_view>

#include "json/reader.h"
#include "json/writer.h"

namespace kcnvrt::text {

// What a text showed: the first thing that was not as it should be, or nothing.
struct Finding {
    std::string problem;
    bool is_accepted = false;  // it is JSON
    bool is_sure = false;      // the reader's own answer, without Jansson's parser
    bool has_nul = false;      // refused for a NUL byte outside strings, whatever Jansson says
    size_t values = 0;         // found by their pointers
};

// Reads the text in both ways, compares trees or refusals; writes the tree in both ways, and compares texts; finds
// every value by its pointer, and compares what stands there.
Finding compare_with_jansson(std::string_view text, ReadOptions options, Layout layout);

}  // namespace kcnvrt::text
