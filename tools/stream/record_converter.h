// Converting one record.
#pragma once

#include "commands/answer.h"
#include "commands/command_line.h"
#include "outcome.h"
#include "record.h"
#include "record_problems.h"

namespace kcnvrt {

struct Verdict {
    bool is_converted = false;
    bool has_warnings = false;
    bool has_losses = false;
};

// Serves any number of threads.
class RecordConverter {
public:
    // The options are borrowed.
    explicit RecordConverter(const Options& options);

    // Adds a line, unless the record is rejected, and what there is to say. The thread's trees are gone afterwards.
    Verdict convert(const Record& record, Outcome& outcome) const;

    // Of a record that is too long to be looked at.
    void reject_too_long(Record record, Outcome& outcome) const;

private:
    bool is_whole(const Record& record, const text::Sought& at, RecordProblems& problems) const;
    bool convert_at(const Record& record, const text::Sought& at, Outcome& outcome, Verdict& verdict) const;
    void add_line(const Record& record, const text::Sought& at, std::string_view output, std::string& lines) const;
    void find_losses(const Record& record, const k_text_result_t* result, Outcome& outcome) const;

    const Options& options_;
    uint32_t operation_;
    const Pointers& pointers_;
    std::size_t longest_;
};

}  // namespace kcnvrt
