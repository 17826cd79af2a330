// Messages for people and programs, on standard error, each line by one write.
#pragma once

#include <k_cnvrt_text.h>

#include <string>
#include <string_view>

namespace kcnvrt {

enum class ErrorFormat {
    kText,  // FILE:LINE:COLUMN: severity: POINTER: message [function]
    kJson,  // an object with the members of Message
};

struct Message {
    std::string_view file;
    std::size_t line = 0;  // from 1, as the column; 0 where there is no place
    std::size_t column = 0;
    const char* pointer = nullptr;
    const char* severity = "error";
    std::string_view function;
    std::string_view text;
};

class Messages {
public:
    explicit Messages(ErrorFormat format) : format_(format) {}

    void print(const Message& message) const;

    // An error that has no place.
    void print(std::string_view file, std::string_view function, std::string_view text) const;

    // The problems of a result, whose texts are those of the two files; there may be no other.
    void print(const k_text_result_t* result, const std::string& text_file, const std::string* other_file) const;

    // One message for each line of `text` that is not empty.
    void print_lines(std::string_view file, std::string_view function, std::string_view text) const;

private:
    ErrorFormat format_;
};

}  // namespace kcnvrt
