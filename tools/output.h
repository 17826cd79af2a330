// Writing the result to standard output or a file. What cannot be written throws a Failure or ClosedPipe.
#pragma once

#include <jansson.h>

#include <string>
#include <string_view>

namespace kcnvrt {

// The file that the result goes to. A regular file is written beside the old one, under a passing name, and takes its
// place in finish(): a reader never sees half a result, and where finish() is never reached the old file stays.
// Standard output ("-"), devices and pipes are written directly.
class Output {
public:
    explicit Output(const std::string& file);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // False once something could not be written; finish() throws what it was.
    bool put(std::string_view text);
    void finish();

private:
    void open_beside(const std::string& path);
    bool flush();
    void close_file();
    [[noreturn]] void fail(int error) const;

    std::string name_;          // as the user gave it
    std::string path_;          // the file to be replaced, empty where the result is written directly
    std::string passing_path_;  // empty once it has been renamed
    std::string buffer_;
    int descriptor_ = -1;
    int error_ = 0;
};

// The value and a line break; `flags` are those of json_dumps.
void write_json(const std::string& file, const json_t* value, std::size_t flags);

void write_text(const std::string& file, std::string_view text);

}  // namespace kcnvrt
