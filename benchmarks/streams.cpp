// The stream with one thread beside other filters over the same lines: the loop of parse_and_dump_lines, and jq; then
// with two threads beside one. Usage: bench_streams PROGRAMS DOCUMENTS
// DOCUMENTS has the streams old.ndjson and new.ndjson, and old.long.ndjson and new.long.ndjson, a large record each.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "process.h"

namespace kcnvrt::bench {

namespace {

constexpr int kRounds = 15;

double size_of(const std::string& file) {
    struct stat status;
    return stat(file.c_str(), &status) == 0 ? static_cast<double>(status.st_size) : 0;
}

Command stream_of(const std::string& programs, const std::string& direction, const char* jobs,
                  const std::string& file) {
    return {programs + "/kcnvrt", "stream", "--" + direction, "--jobs", jobs, file};
}

void compare(const std::string& programs, const std::string& documents, bool is_old) {
    const std::string direction = is_old ? "to-new" : "to-old";
    const std::string layout = is_old ? "old" : "new";
    const std::string lines = documents + "/" + layout + ".ndjson";
    const std::string record = documents + "/" + layout + ".long.ndjson";
    const auto costs = run_in_turn({stream_of(programs, direction, "1", lines),
                                    {programs + "/parse_and_dump_lines", lines},
                                    {"jq", "-c", ".", lines},
                                    stream_of(programs, direction, "1", record)},
                                   kRounds);
    const double megabytes = size_of(lines) / 1e6;
    const double peak = median_of(costs[3], &Cost::kilobytes) * 1024;
    std::printf(
        "%-7s %6.1f MB  %7.1f MB/s of CPU  / Jansson %.2f  / jq %.2f  peak %.1f MB, "
        "with a record of %.1f MB %.1f MB\n",
        direction.c_str(), megabytes, megabytes / median_of(costs[0], &Cost::seconds), median_ratio(costs[0], costs[1]),
        median_ratio(costs[0], costs[2]), median_of(costs[0], &Cost::kilobytes) * 1024 / 1e6, size_of(record) / 1e6,
        peak / 1e6);
    std::fflush(stdout);
}

// On all cores: what a second thread costs of CPU time.
void compare_threads(const std::string& programs, const std::string& documents) {
    const std::string lines = documents + "/old.ndjson";
    const auto costs =
        run_in_turn({stream_of(programs, "to-new", "1", lines), stream_of(programs, "to-new", "2", lines)}, kRounds);
    std::printf("two threads: %.2f of the CPU time of one\n", median_ratio(costs[1], costs[0]));
}

}  // namespace

}  // namespace kcnvrt::bench

int main(int argc, char** argv) {
    using namespace kcnvrt::bench;
    if (argc != 3) return EXIT_FAILURE;
    compare_threads(argv[1], argv[2]);
    stay_on_one_core();
    compare(argv[1], argv[2], true);
    compare(argv[1], argv[2], false);
}
