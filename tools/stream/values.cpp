#include "values.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "commands/command_line.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kMostJobs = 1024;
constexpr std::string_view kUnits = "KMG";

// Nothing where it is no number, or too large. The rest of the text is left.
std::optional<std::size_t> take_number(std::string_view& text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

std::optional<std::size_t> number_in(std::string_view text) {
    const std::optional<std::size_t> number = take_number(text);
    return text.empty() ? number : std::nullopt;
}

// 64M is 64 times 1024 times 1024.
std::optional<std::size_t> size_in(std::string_view text) {
    const std::optional<std::size_t> number = take_number(text);
    if (!number || text.empty()) return number;
    const std::size_t unit = kUnits.find(text.front());
    if (text.size() != 1 || unit == std::string_view::npos) return std::nullopt;
    const std::size_t shift = 10 * (unit + 1);
    return *number <= SIZE_MAX >> shift ? std::optional(*number << shift) : std::nullopt;
}

// RFC 6901: each token behind a slash, "~" only in "~0" and "~1".
bool is_pointer(std::string_view text) {
    for (std::size_t at = text.find('~'); at != std::string_view::npos; at = text.find('~', at + 1))
        if (at + 1 == text.size() || (text[at + 1] != '0' && text[at + 1] != '1')) return false;
    return text.starts_with('/');
}

constexpr const char* kPointer = "a JSON Pointer, such as /config";

}  // namespace

const char* nothing_to_store(Options&, const char*) {
    return nullptr;
}

const char* stream_input(Options& options, const char* value) {
    options.file = value;
    options.stream.files.emplace_back(value);
    return nullptr;
}

const char* stream_output_dir(Options& options, const char* value) {
    options.stream.output_dir = value;
    return std::string_view(value) == kStandardStream ? "a folder" : nullptr;
}

const char* stream_resume(Options& options, const char*) {
    options.stream.resume = true;
    return nullptr;
}

const char* stream_at(Options& options, const char* value) {
    options.stream.pointers.at = value;
    return is_pointer(value) ? nullptr : kPointer;
}

const char* stream_at_text(Options& options, const char*) {
    options.stream.pointers.holds_text = true;
    return nullptr;
}

const char* stream_id(Options& options, const char* value) {
    options.stream.pointers.id = value;
    return is_pointer(value) ? nullptr : kPointer;
}

const char* stream_rejects(Options& options, const char* value) {
    options.stream.rejects = value;
    return nullptr;
}

const char* stream_problems(Options& options, const char* value) {
    options.stream.problems = value;
    return nullptr;
}

const char* stream_on_reject(Options& options, const char* value) {
    const std::string_view line(value);
    options.stream.null_for_rejects = line == "null";
    return line == "null" || line == "skip" ? nullptr : "skip or null";
}

const char* stream_max_rejects(Options& options, const char* value) {
    options.stream.max_rejects = number_in(value);
    return options.stream.max_rejects ? nullptr : "a number";
}

const char* stream_accept_rejects(Options& options, const char*) {
    options.stream.accept_rejects = true;
    return nullptr;
}

const char* stream_max_record(Options& options, const char* value) {
    const std::size_t size = size_in(value).value_or(0);
    options.stream.sizes.longest = size;
    return size != 0 && size < SIZE_MAX / 4 ? nullptr : "a size, such as 64M";
}

const char* stream_jobs(Options& options, const char* value) {
    options.stream.jobs = number_in(value).value_or(0);
    const bool fits = options.stream.jobs >= 1 && options.stream.jobs <= kMostJobs;
    return fits ? nullptr : "a number from 1 to 1024";
}

const char* stream_block(Options& options, const char* value) {
    options.stream.sizes.block = size_in(value).value_or(0);
    const bool fits = options.stream.sizes.block >= 1 && options.stream.sizes.block <= kLargeRecord;
    return fits ? nullptr : "a size from 1 to 1M";
}

const char* stream_summary(Options& options, const char* value) {
    const std::string_view format(value);
    options.stream.summary = format == "json"   ? SummaryFormat::kJson
                             : format == "text" ? SummaryFormat::kText
                                                : SummaryFormat::kNone;
    return format == "json" || format == "text" || format == "none" ? nullptr : "text, json or none";
}

const char* census_json(Options& options, const char*) {
    options.stream.json = true;
    return nullptr;
}

const char* census_html(Options& options, const char* value) {
    options.stream.html = value;
    return nullptr;
}

const char* stream_progress(Options& options, const char*) {
    options.stream.progress = true;
    return nullptr;
}

}  // namespace kcnvrt
