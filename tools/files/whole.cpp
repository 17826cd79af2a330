#include "whole.h"

#include <sys/stat.h>

#include <string_view>
#include <utility>

#include "disk/input.h"
#include "failure.h"
#include "json/skip.h"

namespace kcnvrt {

namespace {

bool is_newer(const struct stat& one, const struct stat& other) {
    const auto time = [](const struct stat& file) { return std::pair(file.st_mtim.tv_sec, file.st_mtim.tv_nsec); };
    return time(one) > time(other);
}

// A result that was cut off ends inside of a text or a bracket.
bool is_whole_json(std::string_view text) {
    if (!text.starts_with('{') && !text.starts_with('[')) return false;
    const std::size_t end = text::skip_value(text, 0);
    return end + 1 == text.size() && text[end] == '\n' && (text[end - 1] == '}' || text[end - 1] == ']');
}

bool are_whole_lines(std::string_view text) {
    return text.empty() || text.ends_with('\n');
}

}  // namespace

bool is_done(const FilePair& file, Content content) {
    struct stat from;
    struct stat to;
    const bool is_there = stat(file.input.c_str(), &from) == 0 && stat(file.output.c_str(), &to) == 0;
    if (!is_there || !S_ISREG(to.st_mode) || !is_newer(to, from)) return false;
    try {
        const Text text = read_file(file.output);
        return content == Content::kJson ? is_whole_json(text.view()) : are_whole_lines(text.view());
    } catch (const Failure&) {
        return false;
    }
}

bool is_empty(const std::string& file) {
    struct stat status;
    return stat(file.c_str(), &status) == 0 && status.st_size == 0;
}

}  // namespace kcnvrt
