// Messages for people and programs, on standard error.
#pragma once

#include <k_cnvrt_text.h>

#include <string>
#include <string_view>

#include "disk/input.h"
#include "print/terminal.h"

namespace kcnvrt {

enum class ErrorFormat {
    kText,     // FILE:LINE:COLUMN: severity: POINTER: message [function], and on a terminal the line of the file
    kJson,     // an object with the members of Message
    kRecords,  // the same as a stream's problems have them, of a file that is one record
};

struct Message {
    std::string_view file;
    std::size_t line = 0;  // from 1, as the column; 0 where there is no place
    std::size_t column = 0;
    const char* pointer = nullptr;
    uint32_t severity = K_TEXT_ERROR;
    std::string_view function;
    std::string_view text;
};

// "error", "warning" or "note".
const char* severity_name(uint32_t severity);

// A text that was asked about, and the file that it is from.
struct Source {
    std::string file;
    Text text;
};

// Of a problem, whose texts the message borrows.
Message message_of(const k_text_problem_t& problem, const Source& text, const Source& other);

// The message on a line.
void append_message(std::string& lines, const Message& message, ErrorFormat format, bool has_colors);

class Messages {
public:
    // Messages are added to `kept` where that is not null, and printed by somebody else.
    explicit Messages(ErrorFormat format, ColorChoice color = ColorChoice::kAuto, std::string* kept = nullptr);

    // An error that has no place.
    void print(std::string_view file, std::string_view function, std::string_view text) const;

    // The problems of a result.
    void print(k_text_result_t* result, const Source& text, const Source& other) const;

    void print(const Message& message) const;

    // One message for each line of `text` that is not empty.
    void print_lines(std::string_view file, std::string_view function, std::string_view text) const;

private:
    void put(std::string_view lines) const;

    ErrorFormat format_;
    bool has_colors_;
    bool shows_lines_;
    std::string* kept_;
};

}  // namespace kcnvrt
