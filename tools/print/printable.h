// Texts of others, as parts of a line.
#pragma once

#include <string>
#include <string_view>

namespace kcnvrt {

// A name or a message may hold anything; what is appended stays on one line and moves no cursor.
void append_printable(std::string& line, std::string_view text);

// In quotes. File names need not be UTF-8, and JSON must be.
void append_json_string(std::string& line, std::string_view text);

}  // namespace kcnvrt
