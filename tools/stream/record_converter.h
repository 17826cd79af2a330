// Converting one record.
#pragma once

#include "answer.h"
#include "command_line.h"
#include "record.h"
#include "record_problems.h"

namespace kcnvrt {

enum class Verdict { kConverted, kWarned, kRejected };

// Serves any number of threads.
class RecordConverter {
public:
    // The options are borrowed.
    explicit RecordConverter(const Options& options);

    // Adds a line to `lines`, unless the record is rejected, and what there is to say to `problems`. The thread's trees
    // are gone afterwards.
    Verdict convert(const Record& record, std::string& lines, std::string& problems) const;

    // Of a record that is too long to be looked at.
    void reject_too_long(const Record& record, std::string& problems) const;

private:
    bool is_whole(const Record& record, const text::Sought& at, RecordProblems& problems) const;
    Verdict convert_at(const Record& record, const text::Sought& at, std::string& lines,
                       RecordProblems& problems) const;

    const Options& options_;
    uint32_t operation_;
    const Pointers& pointers_;
    std::size_t longest_;
};

}  // namespace kcnvrt
