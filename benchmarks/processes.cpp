// The tool's whole process, from its start to its end, beside others that read and write the same document: a program
// that parses and dumps it with Jansson, jq, python3 and node, as far as they are installed.
// Usage: bench_processes PROGRAMS DOCUMENTS SCALE...
// DOCUMENTS has old.SCALE.json and new.SCALE.json. Prints a line for each process, in columns that are easy to read on.
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "process.h"

namespace kcnvrt::bench {

namespace {

constexpr const char* kPython = "import json, sys; sys.stdout.write(json.dumps(json.load(open(sys.argv[1]))))";
constexpr const char* kNode =
    "process.stdout.write(JSON.stringify(JSON.parse(require('fs').readFileSync(process.argv[1]))))";

struct Contestant {
    const char* name;
    Command command;  // to which the document is added
};

bool is_installed(const char* program) {
    return std::system(("command -v " + std::string{program} + " > /dev/null").c_str()) == 0;
}

// Jansson and the tool come first.
std::vector<Contestant> contestants(const std::string& programs, const char* direction) {
    std::vector<Contestant> list = {{"Jansson", {programs + "/parse_and_dump"}},
                                    {direction, {programs + "/kcnvrt", direction}}};
    const std::vector<Contestant> others = {
        {"jq", {"jq", "-c", "."}}, {"python3", {"/usr/bin/python3", "-c", kPython}}, {"node", {"node", "-e", kNode}}};
    for (const Contestant& other : others)
        if (is_installed(other.command[0].c_str())) list.push_back(other);
    return list;
}

double size_of(const std::string& file) {
    struct stat status;
    return stat(file.c_str(), &status) == 0 ? static_cast<double>(status.st_size) : NAN;
}

// Enough for a median of small documents, and soon done for large ones.
int rounds_for(double size) {
    return std::max(11, static_cast<int>(101 / (1 + size / 500e3)));
}

void print(const char* name, double size, const std::vector<Cost>& costs, const std::vector<Cost>& jansson,
           const std::vector<Cost>& tool) {
    const double memory = median_of(costs, &Cost::kilobytes);
    std::printf("%-9.0f %-9s %9.2f %9.3f %9.3f %9.1f %9.1f\n", size, name, median_of(costs, &Cost::seconds) * 1e3,
                median_ratio(costs, jansson), median_ratio(tool, costs), memory / 1024, memory * 1024 / size);
    std::fflush(stdout);
}

void compare(const std::string& programs, const char* direction, const std::string& document) {
    const double size = size_of(document);
    const std::vector<Contestant> list = contestants(programs, direction);
    std::vector<Command> commands;
    for (const Contestant& contestant : list) {
        commands.push_back(contestant.command);
        commands.back().push_back(document);
    }
    const auto costs = run_in_turn(commands, rounds_for(size));
    for (size_t i = 0; i < list.size(); ++i) print(list[i].name, size, costs[i], costs[0], costs[1]);
}

}  // namespace

}  // namespace kcnvrt::bench

int main(int argc, char** argv) {
    using namespace kcnvrt::bench;
    if (argc < 4) return EXIT_FAILURE;
    stay_on_one_core();
    std::printf("%-9s %-9s %9s %9s %9s %9s %9s\n", "# bytes", "process", "CPU ms", "/Jansson", "tool/it", "peak MB",
                "/byte");
    for (int i = 3; i < argc; ++i)
        for (const bool is_old : {true, false})
            compare(argv[1], is_old ? "to-new" : "to-old",
                    std::string{argv[2]} + (is_old ? "/old." : "/new.") + argv[i] + ".json");
}
