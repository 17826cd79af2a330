#include "whole.h"

#include <sys/stat.h>

#include <string_view>
#include <utility>

#include "failure.h"
#include "input.h"
#include "json/skip.h"

namespace kcnvrt {

namespace {

bool is_newer(const struct stat& one, const struct stat& other) {
    const auto time = [](const struct stat& file) { return std::pair(file.st_mtim.tv_sec, file.st_mtim.tv_nsec); };
    return time(one) > time(other);
}

// A result that was cut off ends inside of a text or a bracket.
bool is_whole(std::string_view text) {
    if (!text.starts_with('{') && !text.starts_with('[')) return false;
    const std::size_t end = text::skip_value(text, 0);
    return end + 1 == text.size() && text[end] == '\n' && (text[end - 1] == '}' || text[end - 1] == ']');
}

}  // namespace

bool is_done(const std::string& input, const std::string& output) {
    struct stat from;
    struct stat to;
    const bool is_there = stat(input.c_str(), &from) == 0 && stat(output.c_str(), &to) == 0;
    if (!is_there || !S_ISREG(to.st_mode) || !is_newer(to, from)) return false;
    try {
        return is_whole(read_file(output).view());
    } catch (const Failure&) {
        return false;
    }
}

}  // namespace kcnvrt
