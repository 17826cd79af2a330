// Writing the result to standard output or a file. What cannot be written throws a Failure or ClosedPipe.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "disk/passing_file.h"

namespace kcnvrt {

// The file that the result goes to. A regular file is written beside the old one, under a passing name, and takes its
// place in finish(): a reader never sees half a result, and where finish() is never reached the old file stays.
// An old file keeps its owner and permissions; a new one gets those that its inputs have in common (see permissions.h).
// Standard output ("-"), devices and pipes are written directly.
class Output {
public:
    Output(const std::string& file, const std::vector<std::string>& inputs);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // False once something could not be written; finish() throws what it was.
    bool put(std::string_view text);
    void finish();

private:
    int create_beside(const std::vector<std::string>& inputs);
    bool flush();
    void close_file();
    [[noreturn]] void fail(int error) const;

    std::string name_;  // as the user gave it
    std::string path_;  // the file to be replaced, empty where the result is written directly
    PassingFile passing_;
    std::string buffer_;
    int descriptor_ = -1;
    int error_ = 0;
};

// The text and a line break.
void write_result(const std::string& file, const std::vector<std::string>& inputs, std::string_view text);

// What is made of no input.
void write_text(const std::string& file, std::string_view text);

}  // namespace kcnvrt
