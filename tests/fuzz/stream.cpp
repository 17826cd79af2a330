// Streams cut into blocks of any size, and records that hold their configuration. The bytes: size of the blocks, length
// of a record, options, the stream.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "bytes.h"
#include "json/reader.h"
#include "start.h"
#include "stream/block_converter.h"

namespace {

using namespace kcnvrt;

// What a stream came to.
struct Run {
    Outcome all;

    bool operator==(const Run& other) const {
        return all.lines == other.all.lines && all.rejects == other.all.rejects && all.problems == other.all.problems &&
               all.tally.records == other.all.tally.records && all.tally.bytes == other.all.tally.bytes;
    }
};

Options options_of(Bytes& bytes) {
    Options options;
    options.stream.sizes.block = 1 + bytes.below(64);
    options.stream.sizes.longest = 1 + bytes.below(4096);
    const uint8_t bits = bytes.next();
    options.to_new = (bits & 3) == 1;
    options.to_old = (bits & 3) == 2;
    options.losses = (bits & 4) != 0;
    if ((bits & 8) != 0) options.stream.pointers.at = (bits & 16) != 0 ? "/config" : "/0/a~1b";
    options.stream.pointers.holds_text = (bits & 8) != 0 && (bits & 32) != 0;
    if ((bits & 64) != 0) options.stream.pointers.id = "/serial";
    options.stream.null_for_rejects = (bits & 128) != 0;
    options.stream.rejects = "kept";
    return options;
}

Run run(const Options& options, const std::string& file) {
    const std::vector<std::string> files = {file};
    Wake wake;
    Splitter splitter(files, options.stream.sizes, wake, -1);
    const BlockConverter converter(options);
    Run run;
    Block block;
    while (splitter.next(block)) {
        const Outcome outcome = converter.convert(block);
        if (outcome.failure) std::rethrow_exception(outcome.failure);
        run.all.lines += outcome.lines;
        run.all.rejects += outcome.rejects;
        run.all.problems += outcome.problems;
        run.all.tally += outcome.tally;
    }
    return run;
}

void require(bool is_so, const char* what, std::string_view stream) {
    if (is_so) return;
    std::fprintf(console, "\nnot so: %s\n%.*s\n", what, static_cast<int>(stream.size()), stream.data());
    std::fflush(console);
    std::abort();
}

// A number that a record is called by may be larger than what is read.
bool is_json(std::string_view line) {
    text::ReadError error;
    const Json json(text::read(line, {.any_value = true, .nul_in_strings = true}, error));
    return json != nullptr || error.kind == text::ReadErrorKind::kNumberTooLarge;
}

bool are_json_lines(std::string_view lines) {
    if (!lines.empty() && !lines.ends_with('\n')) return false;
    Bytes rest(lines);
    while (!rest.are_used_up())
        if (!is_json(rest.take_until('\n'))) return false;
    return true;
}

void check(const Run& run, const Options& options, std::string_view stream) {
    const Tally& tally = run.all.tally;
    const auto lines = static_cast<std::size_t>(std::ranges::count(run.all.lines, '\n'));
    const auto rejects = static_cast<std::size_t>(std::ranges::count(run.all.rejects, '\n'));
    require(tally.records == tally.converted + tally.rejected, "each record is converted or rejected", stream);
    require(tally.bytes == stream.size(), "all bytes are read", stream);
    require(rejects == tally.rejected, "each reject is a line", stream);
    require(lines == (options.stream.null_for_rejects ? tally.records : tally.converted), "each result is a line",
            stream);
    require(are_json_lines(run.all.lines), "results are JSON", stream);
    require(are_json_lines(run.all.problems), "problems are JSON", stream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    Options options = options_of(bytes);
    const std::string_view stream = bytes.take(size);
    const int file = memfd_create("stream", MFD_CLOEXEC);
    if (write(file, stream.data(), stream.size()) != static_cast<ssize_t>(stream.size())) std::abort();
    const std::string name = "/proc/self/fd/" + std::to_string(file);
    const Run in_pieces = run(options, name);
    check(in_pieces, options, stream);
    options.stream.sizes.block = kLargeRecord;
    require(run(options, name) == in_pieces, "the size of a block changes nothing", stream);
    close(file);
    return 0;
}
