// The example configurations, read from their files.
#include "examples.h"

#include <cstdio>
#include <cstdlib>

namespace {

Tree load(const std::string& name) {
    const std::string path = KCNVRT_EXAMPLES "/" + name + ".json";
    json_error_t error;
    Tree tree{json_load_file(path.c_str(), JSON_REJECT_DUPLICATES, &error)};
    if (tree == nullptr) {
        std::fprintf(stderr, "%s:%d: %s\n", path.c_str(), error.line, error.text);
        std::exit(1);
    }
    return tree;
}

}  // namespace

Tree old_example() {
    return load("home-gateway.old");
}

Tree new_example() {
    return load("home-gateway.new");
}

std::vector<Example> examples() {
    std::vector<Example> all;
    for (const char* name : {"home-gateway", "dsl-gateway"})
        all.push_back({name, load(std::string{name} + ".old"), load(std::string{name} + ".new")});
    return all;
}
