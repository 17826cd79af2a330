// A file that lines are added to, whole ones: also when the disk is full, or a signal ends the run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kcnvrt {

class LineFile {
public:
    // Standard output or standard error; `name` is what messages call it.
    LineFile(int descriptor, std::string name);
    // A file, which is emptied, or made for those who may read all of the inputs. Throws a Failure.
    LineFile(const std::string& file, const std::vector<std::string>& inputs);
    ~LineFile();
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    // The last line may go on with the next call. What cannot be written throws a Failure, of standard output
    // also ClosedPipe, of standard error nothing; a line of a regular file that is not whole is taken back.
    void write(std::string_view lines);

    int descriptor() const { return descriptor_; }

private:
    void count(std::string_view written);
    void take_back();
    [[noreturn]] void end(std::string_view rest);
    bool write_some(std::string_view& lines);

    int descriptor_;
    std::string name_;
    std::size_t unfinished_ = 0;  // bytes behind the last line break
};

}  // namespace kcnvrt
