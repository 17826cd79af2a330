// Writes the configurations that are measured, for other programs to read: bench_fixtures old|new SCALE
// They are indented as the example is.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "subjects.h"

using namespace kcnvrt;
using bench::Layout;

int main(int argc, char** argv) {
    const std::string_view layout = argc == 3 ? argv[1] : "";
    const unsigned long scale = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : 0;
    if ((layout != "old" && layout != "new") || scale < 1 || scale > 1000) {
        std::fputs("Usage: bench_fixtures old|new SCALE\n", stderr);
        return EXIT_FAILURE;
    }
    const Json root = bench::configuration(layout == "old" ? Layout::kOld : Layout::kNew, static_cast<unsigned>(scale));
    return json_dumpf(root.get(), stdout, JSON_INDENT(4)) == 0 && std::fflush(stdout) == 0 ? EXIT_SUCCESS
                                                                                           : EXIT_FAILURE;
}
