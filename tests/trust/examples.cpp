// The example of a home gateway, read once.
#include "examples.h"

#include <cstdio>
#include <cstdlib>

namespace {

Tree load(const char* path) {
    json_error_t error;
    Tree tree{json_load_file(path, JSON_REJECT_DUPLICATES, &error)};
    if (tree == nullptr) {
        std::fprintf(stderr, "%s:%d: %s\n", path, error.line, error.text);
        std::exit(1);
    }
    return tree;
}

}  // namespace

Tree old_example() {
    return load(KCNVRT_EXAMPLES "/home-gateway.old.json");
}

Tree new_example() {
    return load(KCNVRT_EXAMPLES "/home-gateway.new.json");
}
