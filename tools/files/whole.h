// Whether a file that is there already is a result that need not be made again.
#pragma once

#include "file_list.h"

namespace kcnvrt {

// What a result is.
enum class Content {
    kJson,   // an object or array from the first byte to the last
    kLines,  // none, or whole ones
};

// Whether the output is newer than the input, and whole.
bool is_done(const FilePair& file, Content content);

// Whether a file is there and has no byte.
bool is_empty(const std::string& file);

}  // namespace kcnvrt
