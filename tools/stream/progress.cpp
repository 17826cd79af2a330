#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "print/numbers.h"
#include "print/terminal.h"

namespace kcnvrt {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kFirst{500};  // a short run shows nothing
constexpr milliseconds kBetween{200};
constexpr milliseconds kBetweenLines{5000};  // that stay, in a file or a pipe
constexpr std::size_t kBarWidth = 20;

void write_to_stderr(std::string_view text) {
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

// H:MM:SS, or M:SS.
std::string clock_time(double seconds) {
    const auto whole = static_cast<unsigned long long>(std::llround(seconds));
    std::array<char, 48> text;
    if (whole >= 3600) {
        std::snprintf(text.data(), text.size(), "%llu:%02llu:%02llu", whole / 3600, whole / 60 % 60, whole % 60);
    } else {
        std::snprintf(text.data(), text.size(), "%llu:%02llu", whole / 60, whole % 60);
    }
    return text.data();
}

std::string rate(double bytes_a_second) {
    return bytes_a_second < 1e6 ? with_digits(bytes_a_second / 1e3, 0) + " kB/s"
                                : with_digits(bytes_a_second / 1e6, bytes_a_second < 1e7 ? 1 : 0) + " MB/s";
}

std::string bar(double part) {
    const auto full = static_cast<std::size_t>(part * kBarWidth);
    return "[" + std::string(full, '#') + std::string(kBarWidth - full, '.') + "]";
}

}  // namespace

Progress::Progress(bool is_shown, const Subject& subject)
    : is_shown_(is_shown), is_terminal_(stderr_is_terminal()), subject_(subject), next_(start_ + kFirst) {}

Progress::~Progress() {
    clear();
}

double Progress::seconds() const {
    return std::chrono::duration<double>(Clock::now() - start_).count();
}

void Progress::show(const Tally& tally) {
    if (!is_shown_ || Clock::now() < next_) return;
    next_ = Clock::now() + (is_terminal_ ? kBetween : kBetweenLines);
    std::string text = line(tally);
    if (!is_terminal_) return write_to_stderr(text + "\n");
    text.resize(std::min(text.size(), terminal_columns() - 1));
    write_to_stderr("\r" + text + "\x1b[K");
    is_on_screen_ = true;
}

void Progress::clear() {
    if (is_on_screen_) write_to_stderr("\r\x1b[K");
    is_on_screen_ = false;
}

// 0 where the end is not known.
double Progress::part_done(const Tally& tally) const {
    const std::size_t total = subject_.bytes != 0 ? subject_.bytes : subject_.records;
    const std::size_t done = subject_.bytes != 0 ? tally.bytes : tally.records + tally.left;
    return total == 0 ? 0 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
}

// The rest takes as long as what is done, in proportion.
std::string Progress::line(const Tally& tally) const {
    const double passed = seconds();
    const double part = part_done(tally);
    const bool is_known = subject_.bytes + subject_.records != 0;
    std::string text;
    if (is_known) text = bar(part) + " " + with_digits(100 * part, 0) + " %  ";
    text += counted(tally.records, subject_.one, subject_.many);
    if (tally.rejected != 0) text += ", " + grouped(tally.rejected) + " rejected";
    text += "  " + rate(static_cast<double>(tally.bytes) / passed) + "  ";
    return part == 0 ? text + clock_time(passed) : text + clock_time(passed * (1 - part) / part) + " left";
}

}  // namespace kcnvrt
