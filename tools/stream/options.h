// What the user asked for of a stream, or of many files.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "record.h"
#include "splitter.h"
#include "summary.h"

namespace kcnvrt {

struct StreamOptions {
    std::vector<std::string> files;  // of a command that takes several
    std::string output_dir;          // "" where one file is converted
    bool resume = false;
    Pointers pointers;
    Sizes sizes;
    std::optional<std::string> rejects;
    std::optional<std::string> problems;
    bool null_for_rejects = false;
    std::optional<std::size_t> max_rejects;
    bool accept_rejects = false;
    std::size_t jobs = 0;  // 0: as many as there are cores
    std::optional<SummaryFormat> summary;
    bool progress = false;
    bool is_census = false;  // nothing is written but what losses there are
    bool json = false;       // of the census
    std::optional<std::string> html;
};

}  // namespace kcnvrt
