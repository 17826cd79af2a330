// The problems of records, an object a line.
#pragma once

#include <k_cnvrt_text.h>

#include <string>

#include "record.h"

namespace kcnvrt {

class RecordProblems {
public:
    // Lines are added to `lines`. All are borrowed.
    RecordProblems(const Record& record, const Pointers& pointers, std::string& lines)
        : record_(record), pointers_(pointers), lines_(lines) {}

    // An error of the record as a whole, or at `pointer`.
    void add_error(const char* pointer, std::string_view message, std::size_t column = 1);

    // What the text layer says of the record, or of the configuration in it, which starts in that column.
    void add_of_record(const k_text_problem_t& problem);
    void add_of_configuration(const k_text_problem_t& problem, std::size_t column);

private:
    struct Place {
        const char* pointer;
        const char* inner;
        std::size_t column;
    };

    void add(const Place& place, const k_text_problem_t& problem);

    const Record& record_;
    const Pointers& pointers_;
    std::string& lines_;
    std::string id_;  // found when it is first needed
};

}  // namespace kcnvrt
