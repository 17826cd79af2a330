// The files to be converted, and the files that they become.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kcnvrt {

struct FilePair {
    std::string input;
    std::string output;
};

// In folders, so that the name of each is there once.
class FileList {
public:
    // All files in `inputs`, files or folders, and in the folders below those: in the order in which they are named, in
    // a folder by their names. Hidden ones are left out, and so is the folder `output` where it is met. Throws a
    // Failure where something is not there, or two files would become one.
    FileList(const std::vector<std::string>& inputs, const std::string& output);

    std::size_t size() const { return ends_.empty() ? 0 : ends_.back(); }
    FilePair operator[](std::size_t number) const;

    // The folders that outputs go to, each behind the one that it is in.
    std::vector<FilePair> folders() const;

private:
    struct Folder {
        std::string input;   // with a slash at the end, "" for the current one
        std::string output;  // with a slash
        std::vector<std::string> files;
    };

    void add_file(const std::string& path, const std::string& output);
    void add_folder(Folder folder, const std::string& output);
    void refuse_twins() const;

    std::vector<Folder> folders_;
    std::vector<std::size_t> ends_;  // how many files there are up to and with each folder
};

}  // namespace kcnvrt
