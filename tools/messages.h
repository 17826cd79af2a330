// Messages for people and programs, on standard error.
#pragma once

#include <k_err.h>

#include <string_view>

namespace kcnvrt {

enum class ErrorFormat {
    kText,  // FILE: function: message
    kJson,  // {"source": FILE, "function": function, "message": message}
};

class Messages {
public:
    explicit Messages(ErrorFormat format) : format_(format) {}

    // One line. A line break at the end of the message is dropped.
    void print(std::string_view source, std::string_view function, std::string_view message) const;

    // One line for each message of a record, in order.
    void print(std::string_view source, const k_err_t* record) const;

    // One message for each line of `text` that is not empty.
    void print_lines(std::string_view source, std::string_view function, std::string_view text) const;

private:
    ErrorFormat format_;
};

}  // namespace kcnvrt
