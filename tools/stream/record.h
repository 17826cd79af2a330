// A record of the stream: a configuration, or JSON that holds one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "json/position.h"

namespace kcnvrt {

struct Record {
    const std::string* file;
    std::size_t line;    // in the file, from 1
    std::size_t offset;  // of its first byte, in the file
    std::string_view text;
};

// What is looked for in each record.
struct Pointers {
    std::string at;                 // of the configuration; "" is the whole record
    bool holds_text = false;        // it is a text, which holds the configuration
    std::optional<std::string> id;  // of what the record is called by in messages
};

// Where the value is; line 0 where there is no such value.
text::Sought find_value(std::string_view record, std::string_view pointer);

std::string_view value_at(std::string_view record, const text::Sought& place);

// Whether a parser could find it too deep: what is read in parts need not be.
bool may_be_too_deep(std::string_view record);

// As JSON: the text, number, true or false that the pointer leads to, also in a record with errors; null for none. A
// number may be too large to be read.
std::string id_of(std::string_view record, const std::optional<std::string>& pointer);

// The text that a JSON string is; nothing where the value is none, or no JSON.
std::optional<std::string> text_in(std::string_view value);

// A text as JSON string.
std::string json_string_of(std::string_view text);

}  // namespace kcnvrt
