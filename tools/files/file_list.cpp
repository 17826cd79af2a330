#include "file_list.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include "failure.h"

namespace kcnvrt {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

[[noreturn]] void fail_to_read(const std::string& path) {
    throw Failure{kUnusableFile, path, "read", std::strerror(errno)};
}

std::string with_slash(std::string folder) {
    if (!folder.ends_with('/')) folder += '/';
    return folder;
}

// Sorted, without hidden ones.
std::vector<std::string> names_in(const std::string& folder) {
    const std::unique_ptr<DIR, CloseFolder> open(opendir(folder.c_str()));
    if (!open) fail_to_read(folder);
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = readdir(open.get()))
        if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
    if (errno != 0) fail_to_read(folder);
    std::ranges::sort(names);
    return names;
}

bool is_same_folder(const struct stat& status, const std::string& folder) {
    struct stat other;
    return stat(folder.c_str(), &other) == 0 && status.st_dev == other.st_dev && status.st_ino == other.st_ino;
}

}  // namespace

FileList::FileList(const std::vector<std::string>& inputs, const std::string& output) {
    for (const std::string& input : inputs) {
        struct stat status;
        if (stat(input.c_str(), &status) != 0) fail_to_read(input);
        if (S_ISDIR(status.st_mode)) {
            add_folder({with_slash(input), with_slash(output), {}}, output);
        } else {
            add_file(input, output);
        }
    }
    std::size_t end = 0;
    for (const Folder& folder : folders_) ends_.push_back(end += folder.files.size());
    refuse_twins();
}

// Those that are named one after the other share a folder.
void FileList::add_file(const std::string& path, const std::string& output) {
    const std::size_t slash = path.rfind('/') + 1;
    const std::string folder = path.substr(0, slash);
    const bool is_new =
        folders_.empty() || folders_.back().input != folder || folders_.back().output != with_slash(output);
    if (is_new) folders_.push_back({folder, with_slash(output), {}});
    folders_.back().files.push_back(path.substr(slash));
}

// A link to a folder is not followed, since it may lead back.
void FileList::add_folder(Folder folder, const std::string& output) {
    std::vector<Folder> below;
    for (std::string& name : names_in(folder.input)) {
        const std::string path = folder.input + name;
        struct stat link;
        struct stat status;
        if (lstat(path.c_str(), &link) != 0 || stat(path.c_str(), &status) != 0) continue;  // gone, or leads nowhere
        if (S_ISDIR(link.st_mode) && !is_same_folder(status, output))
            below.push_back({path + "/", folder.output + name + "/", {}});
        if (S_ISREG(status.st_mode)) folder.files.push_back(std::move(name));
    }
    folders_.push_back(std::move(folder));
    for (Folder& each : below) add_folder(std::move(each), output);
}

FilePair FileList::operator[](std::size_t number) const {
    const auto end = std::ranges::upper_bound(ends_, number);
    const Folder& folder = folders_[static_cast<std::size_t>(end - ends_.begin())];
    const std::string& name = folder.files[folder.files.size() - (*end - number)];
    return {folder.input + name, folder.output + name};
}

std::vector<FilePair> FileList::folders() const {
    std::vector<FilePair> folders;
    for (const Folder& folder : folders_) folders.push_back({folder.input, folder.output});
    return folders;
}

// Only files of several arguments can become one.
void FileList::refuse_twins() const {
    std::vector<std::pair<std::string, std::size_t>> outputs;
    if (folders_.size() < 2 && (folders_.empty() || std::ranges::is_sorted(folders_[0].files, std::less_equal<>())))
        return;
    for (std::size_t i = 0; i < size(); ++i) outputs.emplace_back((*this)[i].output, i);
    std::ranges::sort(outputs);
    const auto twin = std::ranges::adjacent_find(outputs, {}, [](const auto& each) { return each.first; });
    if (twin == outputs.end()) return;
    throw Failure{kWrongUsage, "kcnvrt", "usage",
                  (*this)[twin->second].input + " and " + (*this)[(twin + 1)->second].input + " would both become " +
                      twin->first};
}

}  // namespace kcnvrt
