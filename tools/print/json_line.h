// A JSON object on one line, for programs that read lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kcnvrt {

class JsonLine {
public:
    // Any bytes: what is no UTF-8 is replaced.
    JsonLine& text(const char* name, std::string_view text);
    JsonLine& text_or_null(const char* name, const char* text);
    JsonLine& number(const char* name, std::size_t number);
    // Null for 0: lines and columns are counted from 1.
    JsonLine& place(const char* name, std::size_t number);
    // A value that is JSON already.
    JsonLine& json(const char* name, std::string_view value);

    // The object, and a line break.
    void append_to(std::string& lines) const;

private:
    std::string line_;
};

}  // namespace kcnvrt
