// The tool: its reading of arguments and input. The bytes: arguments, one a line, an empty line, what the files and
// standard input hold.
#include <fcntl.h>
#include <jansson.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "bytes.h"
#include "commands/command_line.h"
#include "properties.h"

namespace {

constexpr size_t kMostArguments = 12;
constexpr const char* kTarget = "out";
constexpr const char* kBefore = "as it was";

// Files in memory that stand in for the standard streams.
class Stream {
public:
    explicit Stream(int descriptor) : descriptor_{descriptor}, file_{memfd_create("stream", MFD_CLOEXEC)} {}
    ~Stream() { close(file_); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    void start(std::string_view text) {
        if (ftruncate(file_, 0) != 0 || pwrite(file_, text.data(), text.size(), 0) < 0) std::abort();
        lseek(file_, 0, SEEK_SET);
        dup2(file_, descriptor_);
    }
    std::string text() const {
        std::string text(static_cast<size_t>(lseek(file_, 0, SEEK_END)), '\0');
        if (pread(file_, text.data(), text.size(), 0) < 0) std::abort();
        return text;
    }

private:
    int descriptor_;
    int file_;
};

struct Streams {
    Stream in{STDIN_FILENO};
    Stream out{STDOUT_FILENO};
    Stream err{STDERR_FILENO};
};

std::string contents(const char* file) {
    std::string text;
    char part[4096];
    const int descriptor = open(file, O_RDONLY | O_CLOEXEC);
    ssize_t got;
    while ((got = read(descriptor, part, sizeof part)) > 0) text.append(part, static_cast<size_t>(got));
    close(descriptor);
    return text;
}

void fill(const char* file, std::string_view text) {
    const int descriptor = open(file, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (write(descriptor, text.data(), text.size()) < 0) std::abort();
    close(descriptor);
}

// A folder of its own, with the files that the arguments may name.
void enter_folder() {
    static char folder[] = "/tmp/kcnvrt-fuzz-XXXXXX";
    if (mkdtemp(folder) == nullptr || chdir(folder) != 0) std::abort();
    std::atexit([] {
        for (const char* file : {"in", "base", kTarget}) unlink(file);
        rmdir(folder);
    });
}

// No argument leads out of the folder, and none makes a new file in it.
bool is_harmless(std::string_view argument, bool names_output) {
    if (argument.find('/') != std::string_view::npos) return false;
    return !names_output || argument == kTarget || argument == "-" || argument.empty();
}

bool takes_output(std::string_view argument) {
    return argument == "-o" || argument == "--output";
}

// An option and its value in one word ("-oFILE", "--output=FILE", "--compact-o") could name any file.
bool hides_output(std::string_view argument) {
    return argument.starts_with("-") && argument.size() > 1 && !takes_output(argument) &&
           (argument.starts_with("--output=") ||
            (!argument.starts_with("--") && argument.find('o') != std::string_view::npos));
}

std::vector<std::string> arguments_of(Bytes& bytes) {
    std::vector<std::string> arguments{"kcnvrt"};
    while (arguments.size() < kMostArguments) {
        std::string argument{bytes.take_until('\n')};
        if (argument.empty()) break;
        argument = argument.c_str();
        if (hides_output(argument)) continue;
        arguments.push_back(is_harmless(argument, takes_output(arguments.back())) ? argument : kTarget);
    }
    return arguments;
}

struct Run {
    int status;
    std::string out;
    std::string err;
    std::string target;

    bool operator==(const Run&) const = default;
};

Run run(std::vector<std::string> arguments, std::string_view input, Streams& streams) {
    fill("in", input);
    fill(kTarget, kBefore);
    streams.in.start(input);
    streams.out.start("");
    streams.err.start("");
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const int status = kcnvrt::run_command_line(static_cast<int>(arguments.size()), pointers.data());
    return {status, streams.out.text(), streams.err.text(), contents(kTarget)};
}

void require(bool is_so, const char* what, const std::vector<std::string>& arguments, const Run& run) {
    if (is_so) return;
    Tree shown{json_pack("{s: i, s: s%, s: s%, s: []}", "status", run.status, "out", run.out.data(), run.out.size(),
                         "err", run.err.data(), run.err.size(), "arguments")};
    for (const std::string& each : arguments)
        json_array_append_new(json_object_get(shown.get(), "arguments"),
                              json_stringn_nocheck(each.data(), each.size()));
    require(false, what, shown.get());
}

bool is_json(const std::string& text) {
    return Tree{json_loadb(text.data(), text.size(), JSON_DECODE_ANY | JSON_ALLOW_NUL, nullptr)} != nullptr;
}

bool has(const std::vector<std::string>& arguments, std::string_view wanted) {
    for (const std::string& each : arguments)
        if (each.find(wanted) != std::string::npos) return true;
    return false;
}

// What prints words or lines, or writes files of its own: tests of the tool try it, and streams have a target.
bool has_other_result(const std::vector<std::string>& arguments) {
    for (const char* const name : {"stream", "census", "losses", "check", "explain", "mapping", "schema", "example",
                                   "--output-", "--rej", "--prob"})
        if (has(arguments, name)) return true;
    return false;
}

// Every line is a message, or with --errors json an object.
bool are_messages(const std::string& text, bool as_json) {
    Bytes lines{text};
    while (!lines.are_used_up()) {
        const std::string line{lines.take_until('\n')};
        if (line.empty() || (as_json ? !is_json(line) : line.find(": ") == std::string::npos)) return false;
    }
    return text.empty() || text.back() == '\n';
}

void check_run(const std::vector<std::string>& arguments, const Run& run) {
    const auto holds = [&](bool is_so, const char* what) { require(is_so, what, arguments, run); };
    holds(run.status >= 0 && run.status <= 3, "the status is one of four");
    const bool is_done = run.status == 0 || (run.status == 1 && (has(arguments, "--ex") || has(arguments, "--pa")));
    holds(is_done || run.out.empty(), "a run that fails writes no result");
    holds(is_done || run.target == kBefore, "a run that fails leaves the file alone");
    holds(is_done || !run.err.empty(), "a run that fails has a message");
    holds(are_messages(run.err, false) || are_messages(run.err, true), "standard error holds messages, one a line");
    const bool prints_text = has(arguments, "-h") || has(arguments, "help") || has(arguments, "-V") ||
                             has(arguments, "--version") || has(arguments, "sections");
    holds(run.status != 0 || run.out.empty() || prints_text || is_json(run.out), "the result is JSON");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Streams streams;
    static const bool entered = (enter_folder(), fill("base", R"({"Device": {}})"), true);
    static_cast<void>(entered);
    Bytes bytes{{reinterpret_cast<const char*>(data), size}};
    const std::vector<std::string> arguments = arguments_of(bytes);
    const std::string_view input = bytes.take(size);
    if (has_other_result(arguments)) return 0;
    const Run first = run(arguments, input, streams);
    check_run(arguments, first);
    require(run(arguments, input, streams) == first, "a second run does the same", arguments, first);
    return 0;
}
