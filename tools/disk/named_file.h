// A file by its name, whether it is there or not.
#pragma once

#include <sys/stat.h>

#include <string>

namespace kcnvrt {

// The file that a chain of symbolic links leads to, whether it exists or not.
std::string follow_links(std::string path);

class NamedFile {
public:
    // The name of standard streams is that of the descriptor.
    explicit NamedFile(std::string name, int standard_stream = -1);

    const std::string& name() const { return name_; }
    bool is_there() const { return is_there_; }
    bool is_regular() const { return is_there_ && S_ISREG(status_.st_mode); }
    off_t size() const { return status_.st_size; }  // of what is there
    int error() const { return error_; }            // why it is not there

    // Whether both are there, and one file.
    bool is(const NamedFile& other) const;
    // Also where neither is there yet.
    bool will_be(const NamedFile& other) const;

private:
    std::string name_;
    std::string path_;  // where it will be; of what is not there
    struct stat status_;
    bool is_there_;
    int error_ = 0;
};

}  // namespace kcnvrt
