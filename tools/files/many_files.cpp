#include "many_files.h"

#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <new>

#include "answer.h"
#include "arguments.h"
#include "file_list.h"
#include "loss_lines.h"
#include "output.h"
#include "stream/named_files.h"
#include "stream/ordered_run.h"
#include "stream/trees.h"
#include "whole.h"

namespace kcnvrt {

namespace {

constexpr mode_t kOwner = 0700;
constexpr mode_t kAll = 0777;

// A folder that is there already stays as it is; a new one may be seen by those who may see the input's.
void make_folder(const std::string& path, mode_t mode) {
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        if (mkdir(folder.c_str(), mode) != 0 && errno != EEXIST)
            throw Failure{kUnusableFile, folder, "write", std::strerror(errno)};
    }
}

void make_folders(const FileList& files) {
    for (const FilePair& folder : files.folders()) {
        struct stat status;
        const bool is_known = stat(folder.input.empty() ? "." : folder.input.c_str(), &status) == 0;
        make_folder(folder.output, is_known ? (status.st_mode & kAll) | kOwner : kOwner);
    }
}

void refuse_to_replace_inputs(const FileList& files) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        const FilePair file = files[i];
        struct stat from;
        struct stat to;
        const bool is_there = stat(file.input.c_str(), &from) == 0 && stat(file.output.c_str(), &to) == 0;
        if (is_there && from.st_dev == to.st_dev && from.st_ino == to.st_ino)
            throw Failure{kWrongUsage, "kcnvrt", "usage", file.input + " would be replaced by what it becomes"};
    }
}

// Takes files, one after the other, for any thread.
class FileConverter {
public:
    FileConverter(uint32_t operation, const Options& options, const FileList& files)
        : operation_(operation), options_(options), files_(files) {}

    bool next(Outcome& outcome) {
        const std::size_t number = next_++;
        if (number >= files_.size()) return false;
        outcome = Outcome();
        outcome.number = number;
        try {
            convert(files_[number], outcome);
        } catch (...) {
            outcome.failure = std::current_exception();
        }
        give_back_trees();
        return true;
    }

private:
    void convert(const FilePair& file, Outcome& outcome) {
        if (options_.stream.resume && is_done(file.input, file.output)) {
            ++outcome.tally.left;
            return;
        }
        ++outcome.tally.records;
        Source source;
        try {
            source = {file.input, read_file(file.input)};
        } catch (const Failure& failure) {
            messages_in(outcome).print(failure.source, failure.function, failure.message);
            return reject(file, outcome);
        }
        outcome.tally.bytes = source.text.size;
        std::unique_lock<std::mutex> large(large_, std::defer_lock);
        if (source.text.size > kLargeRecord) large.lock();
        convert(file, source, outcome);
    }

    void convert(const FilePair& file, const Source& source, Outcome& outcome) {
        const Result result = run_request(request_of(operation_, source.text.view(), options_));
        if (k_text_status(result.get()) == K_TEXT_OUT_OF_MEMORY) throw std::bad_alloc();
        const Messages messages = messages_in(outcome);
        messages.print(result.get(), source, source);
        print_losses(result.get(), source.file, messages);
        if (k_text_output(result.get(), nullptr) != nullptr)
            write_result(file.output, {file.input}, output_of(result.get()));
        if (k_text_status(result.get()) != K_TEXT_CONVERTED) return reject(file, outcome);
        ++outcome.tally.converted;
        if (has_warnings(result.get())) ++outcome.tally.warned;
    }

    // For a file they are objects, without colours.
    Messages messages_in(Outcome& outcome) const {
        const bool is_file = options_.stream.problems.has_value();
        return Messages(is_file ? ErrorFormat::kJson : options_.errors, is_file ? ColorChoice::kNever : options_.color,
                        &outcome.problems);
    }

    void reject(const FilePair& file, Outcome& outcome) const {
        outcome.rejects = file.input + "\n";
        ++outcome.tally.rejected;
        outcome.behind_rejects.push_back(outcome.end());
    }

    const uint32_t operation_;
    const Options& options_;
    const FileList& files_;
    std::atomic<std::size_t> next_{0};
    std::mutex large_;
};

}  // namespace

bool are_many_files(const Options& options, const char* command) {
    const std::vector<std::string>& files = options.stream.files;
    const Command* const page = find_command(command);
    if (options.stream.output_dir.empty()) {
        if (files.size() > 1) fail_by_usage("several files need a folder to write to: --output-dir FOLDER", page);
        return false;
    }
    if (files.empty()) fail_by_usage("--output-dir needs files or folders", page);
    if (options.base) fail_by_usage("--output-dir excludes --base", page);
    for (const std::string& file : files)
        if (file == kStandardStream) fail_by_usage("standard input has no name in --output-dir", page);
    return true;
}

ExitStatus convert_files(uint32_t operation, const Options& options, const char* command) {
    const FileList files(options.stream.files, options.stream.output_dir);
    refuse_to_replace_inputs(files);
    check_files(options, command);
    make_folders(files);
    FileConverter converter(operation, options, files);
    OrderedRun run(options, {.bytes = 0, .records = files.size()});
    return run.run([&converter](Outcome& outcome) { return converter.next(outcome); });
}

}  // namespace kcnvrt
