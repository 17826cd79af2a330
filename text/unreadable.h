// unreadable.h: what is wrong with a text that cannot be read, in words for those who have to mend it.
#pragma once

#include "basis/buffer.h"
#include "json/reader.h"
#include "source.h"

namespace kcnvrt::text {

// What a file really is that was taken for JSON: compressed, an HTML page, in another encoding.
struct Foreign {
    const char* kind;  // null when it is none of those that are known
    bool is_text;      // whether it has lines that a person could read
};

Foreign foreign_kind(std::string_view text);

// Why the text was refused, without any value of it. Null when memory ends; `words` holds what has to be put together.
const char* explain(const ReadError& error, const Source& source, Buffer& words);

}  // namespace kcnvrt::text
