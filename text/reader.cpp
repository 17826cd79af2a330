#include "reader.h"

#include "parser.h"

namespace kcnvrt::text {

json_t* read(std::string_view text, ReadOptions options, ReadError& error) {
    return parse(text, options, error);
}

}  // namespace kcnvrt::text
