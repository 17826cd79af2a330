#include "conflicts.h"

#include <sys/stat.h>

#include "commands/arguments.h"

namespace kcnvrt {

namespace {

// A name, and the file that has it by now.
class Named {
public:
    explicit Named(std::string name) : name_(std::move(name)), is_there_(stat(name_.c_str(), &status_) == 0) {}

    const std::string& name() const { return name_; }

    bool is(const Named& other) const {
        return is_there_ && other.is_there_ && status_.st_dev == other.status_.st_dev &&
               status_.st_ino == other.status_.st_ino;
    }

    // Also where neither is there yet.
    bool will_be(const Named& other) const {
        if (is(other)) return true;
        if (is_there_ || other.is_there_ || last() != other.last()) return false;
        return folder() == other.folder() || Named(folder()).is(Named(other.folder()));
    }

private:
    std::size_t last_start() const { return name_.rfind('/') + 1; }
    std::string last() const { return name_.substr(last_start()); }
    std::string folder() const { return last_start() == 0 ? "." : name_.substr(0, last_start()); }

    std::string name_;
    struct stat status_;
    bool is_there_;
};

std::vector<Named> files_besides(const Options& options) {
    std::vector<Named> besides;
    for (const auto& file : {options.stream.rejects, options.stream.problems})
        if (file) besides.emplace_back(*file);
    return besides;
}

}  // namespace

void refuse_conflicts(const FileList& files, const Options& options, const char* command) {
    const Command* const page = find_command(command);
    const std::vector<Named> besides = files_besides(options);
    for (std::size_t i = 0; i < files.size(); ++i) {
        const FilePair pair = files[i];
        const Named input(pair.input);
        const Named output(pair.output);
        if (input.is(output)) fail_by_usage(input.name() + " would be replaced by what it becomes", page);
        for (const Named& file : besides) {
            if (file.is(input)) fail_by_usage("\"" + file.name() + "\" is read, so it cannot be written too", page);
            if (file.will_be(output)) fail_by_usage("\"" + file.name() + "\" is to be written twice", page);
        }
    }
}

}  // namespace kcnvrt
