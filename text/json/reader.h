// reader.h: from a JSON text to a Jansson tree.
#pragma once

#include <jansson.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "json/position.h"

namespace kcnvrt::text {

struct ReadOptions {
    bool any_value = false;       // also a text, a number, a literal at the top
    bool nul_in_strings = false;  // \u0000 in a text; never in a member's name
};

// Why a text was refused. The detail of some kinds is in ReadError::text.
enum class ReadErrorKind : uint8_t {
    kSyntax,
    kEmpty,         // nothing, or white space only
    kEndOfText,     // it ends in the middle
    kTrailing,      // more behind the value
    kNotContainer,  // neither object nor array, which any_value would allow
    kByteNul,       // a byte 0 outside a string
    kEscapedNul,    // \u0000 where it is not allowed
    kInvalidUtf8,
    kDuplicate,  // a member given twice in one object
    kNumberTooLarge,
    kTooDeep,  // more than 2,048 levels
    kOutOfMemory,
};

struct ReadError {
    ReadErrorKind kind;
    Spot spot;                          // where what is wrong begins; the end of the text for kEndOfText
    char text[JSON_ERROR_TEXT_LENGTH];  // in the parser's words
};

// A new reference, or null with `error` filled. Members given twice are always refused. The text needs no byte behind
// it.
json_t* read(std::string_view text, ReadOptions options, ReadError& error);

// What read() does by itself: the tree of a text that it is sure of; null for any other, which is Jansson's to judge,
// and when memory ends, which it says.
json_t* read_if_sure(std::string_view text, bool* lacks_memory = nullptr);

}  // namespace kcnvrt::text
