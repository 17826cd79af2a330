// Converting a block, line by line.
#pragma once

#include "outcome.h"
#include "record_converter.h"
#include "splitter.h"

namespace kcnvrt {

// Serves any number of threads.
class BlockConverter {
public:
    explicit BlockConverter(const Options& options);

    // What makes it a large one goes over to the outcome.
    Outcome convert(Block& block) const;

private:
    void convert_lines(const Block& block, Outcome& outcome) const;
    void convert_whole_line(const Record& record, std::string_view line, Outcome& outcome) const;
    void convert_line(const Record& record, std::string_view line, Outcome& outcome) const;
    void reject_piece(const Block& block, Outcome& outcome) const;
    void count_reject(Outcome& outcome) const;

    RecordConverter record_;
    bool keeps_rejects_;
    bool null_for_rejects_;
};

}  // namespace kcnvrt
