#include "many_files.h"

#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <new>

#include "census/findings.h"
#include "commands/answer.h"
#include "commands/arguments.h"
#include "commands/loss_lines.h"
#include "conflicts.h"
#include "disk/output.h"
#include "print/printable.h"
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

// Takes files, one after the other, for any thread.
class FileConverter {
public:
    FileConverter(const FileTask& task, const Options& options, const FileList& files, const Subject& subject)
        : task_(task), options_(options), files_(files), subject_(subject) {}

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

    // Whether any report says anything.
    bool has_told() const { return has_told_; }

private:
    void convert(const FilePair& file, Outcome& outcome) {
        if (options_.stream.resume && is_done(file, task_.report != nullptr ? Content::kLines : Content::kJson)) {
            ++outcome.tally.left;
            if (task_.report != nullptr && !is_empty(file.output)) has_told_ = true;
            return;
        }
        ++outcome.tally.records;
        Source source;
        try {
            source = {file.input, read_file(file.input)};
        } catch (const Failure& failure) {
            messages_in(outcome).print(failure.source, failure.function, failure.message);
            if (subject_.has_losses) outcome.findings.push_back({"error", "", id_of(file)});
            return reject(file, outcome);
        }
        outcome.tally.bytes = source.text.size;
        std::unique_lock<std::mutex> large(large_, std::defer_lock);
        if (source.text.size > kLargeRecord) large.lock();
        convert(file, source, outcome);
    }

    void convert(const FilePair& file, const Source& source, Outcome& outcome) {
        k_text_request_t request = request_of(task_.operation, source.text.view(), options_);
        request.flags |= task_.flags;
        const Result result = run_request(request);
        if (k_text_status(result.get()) == K_TEXT_OUT_OF_MEMORY) throw std::bad_alloc();
        if (task_.report != nullptr)
            write_report(file, source, result.get(), messages_in(outcome));
        else
            write_output(file, source, result.get(), messages_in(outcome));
        count(file, result.get(), outcome);
    }

    void write_output(const FilePair& file, const Source& source, k_text_result_t* result, const Messages& messages) {
        messages.print(result, source, source);
        print_losses(result, source.file, messages);
        if (k_text_output(result, nullptr) != nullptr) write_result(file.output, {file.input}, output_of(result));
    }

    // What is told of a file says as much as the file.
    void write_report(const FilePair& file, const Source& source, k_text_result_t* result, const Messages& messages) {
        const std::optional<std::string> report = task_.report(result, source, options_, messages);
        if (!report) return;
        Output output(file.output, {file.input});
        output.put(*report);
        output.finish();
        if (!report->empty()) has_told_ = true;
    }

    // A report of losses is also made of what is rejected.
    void count(const FilePair& file, const k_text_result_t* result, Outcome& outcome) const {
        if (subject_.has_losses) add_findings(result, id_of(file), outcome.findings);
        if (k_text_status(result) != K_TEXT_CONVERTED || has_errors(result)) return reject(file, outcome);
        const bool is_warned = has_warnings(result);
        const bool is_lossy = k_text_loss_count(result) != 0;
        ++outcome.tally.converted;
        outcome.tally.warned += is_warned ? 1 : 0;
        outcome.tally.lossy += is_lossy ? 1 : 0;
        outcome.tally.troubled += is_warned || is_lossy ? 1 : 0;
    }

    static std::string id_of(const FilePair& file) {
        std::string id;
        append_json_string(id, file.input);
        return id;
    }

    // For a file they are the objects of a stream, without colours.
    Messages messages_in(Outcome& outcome) const {
        const bool is_file = options_.stream.problems.has_value();
        return Messages(is_file ? ErrorFormat::kRecords : options_.errors,
                        is_file ? ColorChoice::kNever : options_.color, &outcome.problems);
    }

    void reject(const FilePair& file, Outcome& outcome) const {
        outcome.rejects = file.input + "\n";
        ++outcome.tally.rejected;
        outcome.behind_rejects.push_back(outcome.end());
    }

    const FileTask& task_;
    const Options& options_;
    const FileList& files_;
    const Subject& subject_;
    std::atomic<std::size_t> next_{0};
    std::atomic<bool> has_told_{false};
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

ExitStatus convert_files(const FileTask& task, const Options& options) {
    const FileList files(options.stream.files, options.stream.output_dir);
    refuse_conflicts(files, options, task.command);
    check_files(options, task.command);
    make_folders(files);
    const bool is_report = task.report != nullptr;
    const Subject subject = {.records = files.size(),
                             .has_losses = options.losses || is_report,
                             .one = "file",
                             .many = "files",
                             .good = is_report ? "convertible" : "converted"};
    FileConverter converter(task, options, files, subject);
    OrderedRun run(options, subject);
    const ExitStatus status = run.run([&converter](Outcome& outcome) { return converter.next(outcome); });
    const bool is_told = options.exit_code && converter.has_told() && !options.stream.accept_rejects;
    return status == kConverted && is_told ? kDifferent : status;
}

}  // namespace kcnvrt
